// What a scan reports about each line to whoever wants more than sections and items.
#ifndef READER_RECORDED_LINE_H_
#define READER_RECORDED_LINE_H_

#include <cstdint>
#include <functional>
#include <string_view>

#include "reader/arena.h"

namespace ruxcomp::reader {

struct Item;
struct Section;

enum class LineKind : std::uint8_t {
  kEmpty,
  kComment,
  kHeader,
  kItem,
  kDropped,  // before the first section, or without a key
};

// A line, together with those that backslashes join to it. Views are in the text of the file or in
// the arena, which knows where their bytes are in the file.
struct RecordedLine {
  LineKind kind;
  std::uint32_t number;      // from 1; of the first one
  std::uint32_t end;         // in the file, after the line end; the next line begins there
  bool is_interrupted;       // by backslashes or NUL bytes
  std::string_view text;     // without the blanks around it
  std::string_view content;  // what its comment leaves of it, without the blanks around that
  const char* equals;        // the '=' of an item; null: none
  const Section* section;    // that the header opens, or that the item is in; null: none
  const Item* item;          // of an item
  const Arena& arena;
};

using LineRecorder = std::function<void(const RecordedLine& line)>;

}  // namespace ruxcomp::reader

#endif  // READER_RECORDED_LINE_H_
