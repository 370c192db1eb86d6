// Numbers as scripts write them.
#ifndef TESTS_PROPERTIES_NUMBER_READING_H_
#define TESTS_PROPERTIES_NUMBER_READING_H_

#include <cctype>
#include <cstdint>
#include <optional>
#include <string>

// The number that a text begins with: of at most ten characters, hexadecimal after "0x", else
// decimal after blanks and a sign. What follows the digits does not count. None when there is no
// digit, and for a zero that is not the first character.
inline std::optional<std::uint32_t> ReadNumber(const std::string& text) {
  if (text.size() > 10) return std::nullopt;
  const bool hexadecimal = text.size() >= 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
  const std::uint64_t base = hexadecimal ? 16 : 10;
  std::size_t at = hexadecimal ? 2 : 0;
  const std::size_t first = at;
  bool negative = false;
  if (!hexadecimal) {
    while (at < text.size() && std::isspace(static_cast<unsigned char>(text[at]))) ++at;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) negative = text[at++] == '-';
  }
  std::uint64_t number = 0;
  for (; at < text.size() && std::isxdigit(static_cast<unsigned char>(text[at])); ++at) {
    const int c = std::tolower(static_cast<unsigned char>(text[at]));
    const auto digit = static_cast<std::uint64_t>(c <= '9' ? c - '0' : c - 'a' + 10);
    if (digit >= base) break;
    number = number * base + digit;
  }
  if (number == 0 && (first >= text.size() || text[first] != '0')) return std::nullopt;
  return static_cast<std::uint32_t>(negative ? 0 - number : number);
}

#endif  // TESTS_PROPERTIES_NUMBER_READING_H_
