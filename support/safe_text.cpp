#include "support/safe_text.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "support/utf8.h"

namespace rux::support {
namespace {

// The one blank that is as wide as it should be among its neighbours.
constexpr std::int32_t kIdeographicSpace = 0x3000;

// What Unicode keeps for programs' own use. Some of it cannot be in XML.
bool IsNoncharacter(std::int32_t code) {
  return (code & 0xFFFE) == 0xFFFE || (code >= 0xFDD0 && code <= 0xFDEF);
}

bool IsPlain(char c) { return c >= ' ' && c <= '~'; }

std::string Escaped(std::string_view text, bool keep_tabs) {
  std::string out;
  while (!text.empty()) {
    // Most texts are ASCII throughout.
    const auto* const plain_end = std::find_if_not(text.begin(), text.end(), IsPlain);
    const auto plain_size = static_cast<std::size_t>(plain_end - text.begin());
    out += text.substr(0, plain_size);
    text.remove_prefix(plain_size);
    if (text.empty()) break;
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

std::string Beginning(std::string_view text, std::size_t most) {
  if (text.size() <= most) return std::string(text);
  std::size_t end = 0;
  for (std::size_t next = 0; next <= most;) {
    end = next;
    next += FirstCharacter(text.substr(end)).bytes.size();
  }
  return std::string(text.substr(0, end)) + "...";
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

bool IsSafe(const Character& character) {
  if (!character.is_valid() || IsNoncharacter(character.code)) return false;
  const utf8proc_property_t& property = *utf8proc_get_property(character.code);
  switch (property.category) {
    case UTF8PROC_CATEGORY_CC:
    case UTF8PROC_CATEGORY_CF:
    case UTF8PROC_CATEGORY_ZL:
    case UTF8PROC_CATEGORY_ZP:
      return false;
    case UTF8PROC_CATEGORY_ZS:
      return character.code == ' ' || character.code == kIdeographicSpace;
    default:
      return property.ignorable == 0;
  }
}

std::string SafeText(std::string_view text) { return Escaped(text, false); }
std::string SafeLine(std::string_view line) { return Escaped(line, true); }

bool AreSafeLines(std::string_view text) {
  while (!text.empty()) {
    const Character character = FirstCharacter(text);
    text.remove_prefix(character.bytes.size());
    const bool ends_line =
        character.code == '\n' || (character.code == '\r' && text.substr(0, 1) == "\n");
    if (!IsSafe(character) && character.code != '\t' && !ends_line) return false;
  }
  return true;
}

std::string SafePath(std::string_view path) {
  const bool is_relative = !path.empty() && path.front() != '/' && path.front() != '.';
  const bool may_be_command = is_relative && path.find("::") != std::string_view::npos;
  return (may_be_command ? "./" : "") + SafeText(path);
}

std::size_t Columns(const Character& character) {
  constexpr std::size_t kEscaped = 4;
  return IsSafe(character) ? character.Width() : kEscaped * character.bytes.size();
}

std::size_t Columns(std::string_view text) {
  // Most texts are ASCII throughout.
  const auto* const plain_end = std::find_if_not(text.begin(), text.end(), IsPlain);
  auto columns = static_cast<std::size_t>(plain_end - text.begin());
  text.remove_prefix(columns);
  while (!text.empty()) {
    const Character character = FirstCharacter(text);
    text.remove_prefix(character.bytes.size());
    columns += Columns(character);
  }
  return columns;
}

std::string Shortened(std::string_view text) { return Beginning(text, 200); }
std::string Excerpted(std::string_view text) { return Beginning(text, 1000); }

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
