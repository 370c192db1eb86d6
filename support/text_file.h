// A text that lines are shown of.
#ifndef SUPPORT_TEXT_FILE_H_
#define SUPPORT_TEXT_FILE_H_

#include <cstdint>
#include <string>
#include <string_view>

namespace rux::support {

// Bytes of a text, from `begin` to before `end`.
struct ByteRange {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;
};

class TextFile {
 public:
  virtual ~TextFile() = default;

  virtual const std::string& path() const = 0;  // as it can be opened from here

  // Lines count from 1. A line of a place is the one that has its byte; after the last byte, the
  // last line; of an empty text, 0.
  virtual std::uint32_t LineAt(std::size_t offset) const = 0;
  virtual std::uint32_t LineStart(std::uint32_t line) const = 0;
  virtual std::string_view Line(std::uint32_t line) const = 0;  // without its end
};

}  // namespace rux::support

#endif  // SUPPORT_TEXT_FILE_H_
