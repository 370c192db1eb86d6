#include "checker/number.h"

#include <charconv>
#include <cstdlib>
#include <cstring>

#include "frontend/predefine.h"

namespace {

// What strtoul reads of the text. It is slow with all that it accepts in front of the digits; where
// there is nothing, the digits alone tell.
unsigned long LeadingNumber(const std::string& text, bool hexadecimal) {
  const int base = hexadecimal ? 16 : 10;
  unsigned long number = 0;
  const char* digits = text.data() + (hexadecimal ? 2 : 0);
  const std::errc error = std::from_chars(digits, text.data() + text.size(), number, base).ec;
  return error == std::errc() ? number : std::strtoul(text.c_str(), nullptr, base);
}

}  // namespace

std::uint32_t StringToLong(const std::string& text, std::uint32_t& out) {
  constexpr std::size_t kLongest = 10;
  const bool hexadecimal = text.size() >= 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
  if (text.size() > kLongest) return 0;
  const unsigned long number = LeadingNumber(text, hexadecimal);
  out = static_cast<std::uint32_t>(number);
  if (number != 0) return 1;
  return text.at(hexadecimal ? 2 : 0) == '0' ? 1 : 0;
}

std::uint32_t NumberOrWord(const std::string& text, std::uint32_t& out) {
  return StringToLong(text, out) || GetPreDefinedValue(text, out) ? 1 : 0;
}

std::uint32_t WordOrNumber(const std::string& text, std::uint32_t& out) {
  return GetPreDefinedValue(text, out) || StringToLong(text, out) ? 1 : 0;
}

std::uint32_t GetOperator(const std::string& text) {
  static constexpr struct {
    const char* text;
    std::uint32_t code;
  } kOperators[] = {
#define OPERATOR(text, code) {text, code},
#include "ruxcomp/operators.def"
  };
  for (const auto& row : kOperators) {
    if (text == row.text) return row.code;
  }
  return 0;
}

bool HasPrefix(const std::string& text, const char* prefix) {
  return text.size() > std::strlen(prefix) && text.rfind(prefix, 0) == 0;
}
