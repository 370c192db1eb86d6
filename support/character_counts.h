// How many characters of UTF-8 stand before the places of a text.
#ifndef SUPPORT_CHARACTER_COUNTS_H_
#define SUPPORT_CHARACTER_COUNTS_H_

#include <cstddef>
#include <string_view>
#include <vector>

namespace rux::support {

// A line may be as long as a script and be asked for many places: it is counted through once.
class CharacterCounts {
 public:
  // The text must outlive the counts.
  explicit CharacterCounts(std::string_view text);

  // The characters that begin before that byte; `at` may be the end.
  std::size_t Before(std::size_t at) const;

 private:
  std::string_view text_;
  std::vector<std::size_t> before_steps_;  // before each multiple of a number of bytes
};

}  // namespace rux::support

#endif  // SUPPORT_CHARACTER_COUNTS_H_
