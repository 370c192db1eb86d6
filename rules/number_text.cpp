#include "rules/number_text.h"

#include <cstddef>

namespace rux::rules {
namespace {

constexpr std::size_t kLongest = 10;

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// The value of a digit; 16 for what is none.
unsigned int DigitOf(char c) {
  if (c >= '0' && c <= '9') return static_cast<unsigned int>(c - '0');
  const char lower = static_cast<char>(c | 0x20);
  return lower >= 'a' && lower <= 'f' ? static_cast<unsigned int>(lower - 'a') + 10 : 16;
}

}  // namespace

NumberText ReadNumber(std::string_view text) {
  NumberText number;
  number.raises = text.empty() || text == "0x" || text == "0X";
  if (number.raises || text.size() > kLongest) return number;
  const bool is_hexadecimal = text.size() > 2 && text[0] == '0' && (text[1] | 0x20) == 'x';
  const unsigned int base = is_hexadecimal ? 16 : 10;
  std::size_t at = is_hexadecimal ? 2 : 0;
  const std::size_t first_digit = at;
  if (!is_hexadecimal) {
    while (at < text.size() && IsSpace(text[at])) ++at;
    number.is_negative = at < text.size() && text[at] == '-';
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
  }
  std::uint64_t value = 0;
  for (; at < text.size() && DigitOf(text[at]) < base; ++at)
    value = value * base + DigitOf(text[at]);
  number.has_rest = at < text.size();
  number.is_cut = value > 0xFFFFFFFF;
  number.value = static_cast<std::uint32_t>(number.is_negative ? 0 - value : value);
  // A zero counts only where its digit comes first of all.
  number.is_number = value != 0 || text[first_digit] == '0';
  return number;
}

}  // namespace rux::rules
