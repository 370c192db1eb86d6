// The number syntax of scripts.
#ifndef RUXCOMP_LANGUAGE_NUMBER_H_
#define RUXCOMP_LANGUAGE_NUMBER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ruxcomp::language {

// Longer texts are not read as numbers at all.
inline constexpr std::size_t kLongestNumber = 10;

// What a text means as a number. Of a text that is too long nothing else is known.
struct Number {
  std::uint32_t value = 0;   // cut to 32 bits; 0 when there is no number
  bool is_number = false;    // the text counts as a number
  bool raises = false;       // it has no digit to look at: "" or a bare "0x"
  bool is_too_long = false;  // more than kLongestNumber characters
  bool has_rest = false;     // characters follow the digits
  bool is_cut = false;       // the digits make a number of more than 32 bits
  bool is_negative = false;  // a minus sign: the value is the two's complement
};

// The value of each character as a digit; 16 for those that are none.
inline constexpr std::array<std::uint8_t, 256> kDigitValues = [] {
  std::array<std::uint8_t, 256> values{};
  for (std::uint8_t& value : values) value = 16;
  for (std::uint8_t i = 0; i < 10; ++i) values[std::size_t{'0'} + i] = i;
  for (std::uint8_t i = 10; i < 16; ++i) {
    values[std::size_t{'a'} + i - 10] = values[std::size_t{'A'} + i - 10] = i;
  }
  return values;
}();

// The number that the digits at the beginning of [at, end) make; moves past them. Ten digits fit.
template <unsigned int kBase>
constexpr std::uint64_t TakeDigits(const char*& at, const char* end) {
  std::uint64_t number = 0;
  for (; at != end; ++at) {
    const unsigned int digit = kDigitValues[static_cast<unsigned char>(*at)];
    if (digit >= kBase) break;
    number = number * kBase + digit;
  }
  return number;
}

constexpr bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr bool IsHexadecimal(std::string_view text) {
  return text.size() >= 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
}

// Reads a decimal number after any white space and a sign, or a hexadecimal one directly after "0x"
// or "0X". What follows the digits is ignored. A number that is not zero counts wherever its digits
// begin; a zero only when it is the first character of the text, or the first after the prefix.
constexpr Number ReadNumber(std::string_view text) {
  Number number;
  number.is_too_long = text.size() > kLongestNumber;
  if (number.is_too_long) return number;
  const bool is_hexadecimal = IsHexadecimal(text);
  const char* at = text.data() + (is_hexadecimal ? 2 : 0);
  const char* const end = text.data() + text.size();
  number.raises = at == end;
  if (number.raises) return number;
  const bool begins_with_zero = *at == '0';
  if (!is_hexadecimal && kDigitValues[static_cast<unsigned char>(*at)] >= 10) {
    while (at != end && IsBlank(*at)) ++at;
    number.is_negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+')) ++at;
  }
  const std::uint64_t magnitude =
      is_hexadecimal ? TakeDigits<16>(at, end) : TakeDigits<10>(at, end);
  number.has_rest = at != end;
  number.is_cut = magnitude > 0xFFFFFFFF;
  number.value = static_cast<std::uint32_t>(number.is_negative ? 0 - magnitude : magnitude);
  number.is_number = magnitude != 0 || begins_with_zero;
  return number;
}

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_NUMBER_H_
