// What formatting changes in a text, for editors.
#ifndef FORMAT_LINE_EDITS_H_
#define FORMAT_LINE_EDITS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support/text_file.h"

namespace rux::format {

// What is to be in the place of some bytes of one line.
struct LineEdit {
  std::uint32_t line;  // from 1
  support::ByteRange bytes;
  std::string text;
};

// Of a text that was formatted without blank_lines, one for each line that differs, in their order.
std::vector<LineEdit> LineEdits(std::string_view text, std::string_view formatted);

}  // namespace rux::format

#endif  // FORMAT_LINE_EDITS_H_
