// Places in texts: bytes inside, lines and characters in messages.
#ifndef PROTOCOL_POSITIONS_H_
#define PROTOCOL_POSITIONS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "protocol/json.h"
#include "support/text_file.h"

namespace rux::protocol {

// In what the characters of a line are counted: bytes, units of UTF-16, or code points. A byte that
// is no UTF-8 counts as one in each.
enum class Encoding : std::uint8_t { kUtf8, kUtf16, kUtf32 };

// As messages call it.
const char* NameOf(Encoding encoding);

// The first one of the client's list that is known; UTF-16 when there is none.
Encoding NegotiatedEncoding(const Json& offered);

// Both count from 0.
struct Position {
  std::uint32_t line = 0;
  std::uint32_t character = 0;
};

struct Range {
  Position start;
  Position end;
};

void to_json(Json& json, const Position& position);
void from_json(const Json& json, Position& position);
void to_json(Json& json, const Range& range);
void from_json(const Json& json, Range& range);

// The lines of a text, which the protocol ends with \n, \r\n or \r. The text must outlive them.
class TextLines {
 public:
  explicit TextLines(std::string_view text);

  // Of the character that has the byte; in a line end or after it, the end of the line.
  Position PositionOf(std::size_t offset, Encoding encoding) const;
  Range RangeOf(support::ByteRange range, Encoding encoding) const;

  // What is after the end of a line or of the text is at its end; within a character, at its
  // beginning.
  std::size_t OffsetOf(Position position, Encoding encoding) const;
  support::ByteRange BytesOf(const Range& range, Encoding encoding) const;

 private:
  std::string_view Line(std::size_t line) const;  // without its end

  std::string_view text_;
  std::vector<std::uint32_t> starts_;

  // The last position: places that are asked for in their order are counted through once.
  struct Counted {
    std::size_t line = 0;
    std::size_t bytes = 0;
    std::uint32_t units = 0;
    Encoding encoding = Encoding::kUtf8;
  };
  mutable Counted last_;
};

}  // namespace rux::protocol

#endif  // PROTOCOL_POSITIONS_H_
