#include "tool/text/safe_text.h"

#include <algorithm>

namespace rux {
namespace {

bool IsControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7F;
}

void AppendEscaped(char c, std::string& out) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  out += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
}

std::string Escaped(std::string_view text, bool keep_tabs) {
  std::string out;
  for (const char c : text) {
    if (IsControl(c) && !(keep_tabs && c == '\t')) {
      AppendEscaped(c, out);
    } else {
      out += c;
    }
  }
  return out;
}

}  // namespace

std::string SafeText(std::string_view text) { return Escaped(text, false); }
std::string SafeLine(std::string_view line) { return Escaped(line, true); }

std::size_t Columns(std::string_view text) {
  const std::string shown = SafeText(text);
  const auto begins_character = [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  };
  return static_cast<std::size_t>(std::count_if(shown.begin(), shown.end(), begins_character));
}

}  // namespace rux
