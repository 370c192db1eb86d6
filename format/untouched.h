// Lines that stay as they are.
#ifndef FORMAT_UNTOUCHED_H_
#define FORMAT_UNTOUCHED_H_

#include <string_view>
#include <vector>

#include "reader/syntax_tree.h"

namespace rux::format {

// Comments that switch formatting: on a line of their own, from that line up to the one that
// switches it on again; after an item or header, for that line.
inline constexpr std::string_view kOffMark = "rux: format off";
inline constexpr std::string_view kOnMark = "rux: format on";

// For each line of a tree whose text has no errors, whether it stays as it is: formatting is
// switched off there, or the line is read differently from how it looks.
//
//   10#rack     no comment begins here
//   a "b" c     the text beside the quotes is dropped
//   C:\a\       on the last line; with a blank after it, anywhere
//   0x\         a line end within a part, a key, a header or a comment
//   12
//
// So does a line with control characters other than tabs.
std::vector<bool> UntouchedLines(const ruxcomp::reader::SyntaxTree& tree);

}  // namespace rux::format

#endif  // FORMAT_UNTOUCHED_H_
