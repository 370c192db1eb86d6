#include "support/safe_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

#include "support/utf8.h"

namespace rux::support {
namespace {

struct CodeRange {
  std::int32_t first;
  std::int32_t last;
};

// The characters that people are not shown.
constexpr CodeRange kUnsafe[] = {
    {0x0000, 0x001F}, {0x007F, 0x009F}, {0x200B, 0x200F}, {0x202A, 0x202E},
    {0x2060, 0x2064}, {0x2066, 0x2069}, {0xFEFF, 0xFEFF}, {Character::kNone, Character::kNone}};

bool IsSafe(const Character& character) {
  return std::none_of(std::begin(kUnsafe), std::end(kUnsafe), [&](const CodeRange& range) {
    return range.first <= character.code && character.code <= range.last;
  });
}

std::string Escaped(std::string_view text, bool keep_tabs) {
  std::string out;
  while (!text.empty()) {
    const Character character = FirstCharacter(text);
    text.remove_prefix(character.bytes.size());
    if (IsSafe(character) || (keep_tabs && character.code == '\t')) {
      out += character.bytes;
    } else {
      out += Hex(character.bytes, "\\x");
    }
  }
  return out;
}

bool NeedsQuotes(std::string_view name) {
  constexpr std::string_view kBeginningsOfOthers = "#@";
  constexpr std::string_view kSeparators = " /\",";
  return name.empty() || kBeginningsOfOthers.find(name.front()) != std::string_view::npos ||
         name.find_first_of(kSeparators) != std::string_view::npos;
}

std::string Quoted(std::string_view name) {
  std::string quoted = "\"";
  for (const char c : name) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + '"';
}

}  // namespace

std::string Hex(std::string_view bytes, std::string_view lead) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string hex;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    hex.append(lead).append({kDigits[byte >> 4], kDigits[byte & 15]});
  }
  return hex;
}

std::string SafeText(std::string_view text) { return Escaped(text, false); }
std::string SafeLine(std::string_view line) { return Escaped(line, true); }

std::size_t Columns(const Character& character) {
  constexpr std::size_t kEscaped = 4;
  return IsSafe(character) ? character.Width() : kEscaped * character.bytes.size();
}

std::size_t Columns(std::string_view text) {
  std::size_t columns = 0;
  while (!text.empty()) {
    const Character character = FirstCharacter(text);
    text.remove_prefix(character.bytes.size());
    columns += Columns(character);
  }
  return columns;
}

std::string Shortened(std::string_view text) {
  constexpr std::size_t kMost = 200;
  if (text.size() <= kMost) return std::string(text);
  std::size_t end = 0;
  for (std::size_t next = 0; next <= kMost;) {
    end = next;
    next += FirstCharacter(text.substr(end)).bytes.size();
  }
  return std::string(text.substr(0, end)) + "...";
}

std::string NameInPath(std::string_view name) {
  return NeedsQuotes(name) ? Quoted(name) : std::string(name);
}

std::string NameText(std::string_view name) {
  return SafeText(name) == name ? NameInPath(name) : SafeText(Quoted(name));
}

bool CanBeTyped(std::string_view text) {
  const auto is_letter = [](char c) { return static_cast<unsigned char>(c) >= 0xA0; };
  while (!text.empty()) {
    const Character character = FirstCharacter(text);
    text.remove_prefix(character.bytes.size());
    const bool may_be_letters =
        !character.is_valid() &&
        std::all_of(character.bytes.begin(), character.bytes.end(), is_letter);
    if (!IsSafe(character) && !may_be_letters) return false;
  }
  return true;
}

}  // namespace rux::support
