// Texts as characters of UTF-8. All that decodes them does it here.
#ifndef SUPPORT_UTF8_H_
#define SUPPORT_UTF8_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace rux::support {

// A character, or bytes that are none: as many as could still have begun one, at least one.
// Overlong forms, surrogates and what is above U+10FFFF are not characters.
struct Character {
  std::string_view bytes;
  std::int32_t code;  // kNone: the bytes are not a character

  static constexpr std::int32_t kNone = -1;
  bool is_valid() const { return code != kNone; }

  // The columns of a terminal that it takes: 2 for a wide one, 0 for one that combines with the
  // character before it. The bytes must be a character.
  std::size_t Width() const;
};

// Of a text that is not empty. LastCharacter() takes the bytes of a broken end one by one.
Character FirstCharacter(std::string_view text);
Character LastCharacter(std::string_view text);

// Whether the text consists of characters.
bool IsUtf8(std::string_view text);

// How many characters come before a place of a text; bytes that are none count as one, like the
// U+FFFD that replaces them in JSON. A line may be as long as a script and be asked about many
// places: it is counted through once.
class CharacterCounts {
 public:
  // The text must outlive the counts.
  explicit CharacterCounts(std::string_view text);

  // The characters that begin before that byte; `at` may be the end.
  std::size_t Before(std::size_t at) const;

 private:
  struct Step {
    std::size_t begin;   // of a character
    std::size_t before;  // the characters before it
  };

  std::string_view text_;
  std::vector<Step> steps_;  // one in each stretch of a number of bytes
};

}  // namespace rux::support

#endif  // SUPPORT_UTF8_H_
