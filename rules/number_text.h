// Texts as the library reads them as numbers.
#ifndef RULES_NUMBER_TEXT_H_
#define RULES_NUMBER_TEXT_H_

#include <cstdint>
#include <string_view>

namespace rux::rules {

struct NumberText {
  bool is_number = false;  // whether the library takes it for one
  bool raises = false;     // it has no digit to look at, which the library cannot bear
  std::uint32_t value = 0;
  bool has_rest = false;     // something follows the digits
  bool is_cut = false;       // it is more than 32 bits
  bool is_negative = false;  // it is stored as what 32 bits make of it
};

// Decimal, or hexadecimal behind 0x; ten characters at most.
NumberText ReadNumber(std::string_view text);

// What cannot be looked up in the table of numbers: it stands for "not found" there.
inline constexpr std::uint32_t kUnfindable = 0xFFFFFFFF;

}  // namespace rux::rules

#endif  // RULES_NUMBER_TEXT_H_
