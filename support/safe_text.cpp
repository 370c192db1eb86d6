#include "support/safe_text.h"

#include <algorithm>

namespace rux::support {
namespace {

bool IsControl(std::string_view character) {
  const auto byte = static_cast<unsigned char>(character.back());
  const bool is_upper = byte >= 0x80 && byte < 0xA0;
  if (character.size() == 1) return byte < 0x20 || byte == 0x7F || is_upper;
  return character.size() == 2 && character.front() == '\xC2' && is_upper;
}

void AppendEscaped(char c, std::string& out) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  out += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
}

std::string Escaped(std::string_view text, bool keep_tabs) {
  std::string out;
  while (!text.empty()) {
    const std::string_view character = FirstCharacter(text);
    text.remove_prefix(character.size());
    if (IsControl(character) && !(keep_tabs && character == "\t")) {
      for (const char c : character) AppendEscaped(c, out);
    } else {
      out += character;
    }
  }
  return out;
}

}  // namespace

std::string_view FirstCharacter(std::string_view text) {
  const auto byte = static_cast<unsigned char>(text.front());
  const std::size_t size = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC2 ? 2 : 1;
  const std::string_view rest = text.substr(1, size - 1);
  const bool is_whole =
      rest.size() == size - 1 && std::all_of(rest.begin(), rest.end(), IsInsideCharacter);
  return text.substr(0, is_whole ? size : 1);
}

bool IsInsideCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

std::string SafeText(std::string_view text) { return Escaped(text, false); }
std::string SafeLine(std::string_view line) { return Escaped(line, true); }

std::string Shortened(std::string_view text) {
  constexpr std::size_t kMost = 200;
  if (text.size() <= kMost) return std::string(text);
  std::size_t end = kMost;
  while (end > 0 && IsInsideCharacter(text[end])) --end;
  return std::string(text.substr(0, end)) + "...";
}

std::size_t Columns(std::string_view text) {
  const std::string shown = SafeText(text);
  return static_cast<std::size_t>(
      std::count_if(shown.begin(), shown.end(), [](char c) { return !IsInsideCharacter(c); }));
}

}  // namespace rux::support
