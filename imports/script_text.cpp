#include "imports/script_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "decompile/decompile.h"
#include "format/format.h"
#include "support/safe_text.h"
#include "support/utf8.h"

namespace rux::imports {
namespace {

constexpr std::size_t kLineWidth = 90;

bool IsDoubleQuote(const support::Character& character) {
  constexpr std::int32_t kFirstTypographic = 0x201C;
  constexpr std::int32_t kLastTypographic = 0x201F;
  return character.code == '"' ||
         (character.code >= kFirstTypographic && character.code <= kLastTypographic);
}

}  // namespace

std::string PlainText(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    const support::Character character = support::FirstCharacter(text);
    text.remove_prefix(character.bytes.size());
    if (IsDoubleQuote(character))
      plain += '\'';
    else if (character.is_valid() && support::IsSafe(character))
      plain += character.bytes;
    else
      plain += character.is_valid() ? ' ' : '?';
  }
  return plain;
}

void ScriptText::WriteItems() {
  std::size_t width = 0;
  for (const Item& item : items_) width = std::max(width, item.key.size());
  for (const Item& item : items_) text_ += fmt::format("{:<{}} ={}\n", item.key, width, item.rest);
  items_.clear();
}

void ScriptText::Comment(std::string_view text) {
  WriteItems();
  // A backslash at the end would join the next line.
  text_ += text.empty() ? "#" : fmt::format("# {}", text);
  if (!text.empty() && text.back() == '\\') text_ += '.';
  text_ += '\n';
}

void ScriptText::Gap() {
  WriteItems();
  text_ += '\n';
}

void ScriptText::Section(std::string_view keyword) {
  WriteItems();
  text_ += fmt::format("[{}]\n", keyword);
}

void ScriptText::Entry(std::string_view key, std::string_view value) {
  items_.push_back({std::string(key), ' ' + decompile::PartText(value)});
}

void ScriptText::Entry(std::string_view key, std::string_view value, std::string_view comment,
                       std::size_t width) {
  items_.push_back({std::string(key),
                    fmt::format(" {:<{}}    # {}", decompile::PartText(value), width, comment)});
}

void ScriptText::List(std::string_view key, const std::vector<std::string>& numbers) {
  items_.push_back({std::string(key), ListText(key.size(), numbers)});
}

std::string ScriptText::Text() {
  WriteItems();
  format::Options options;
  options.blank_lines = true;
  return format::Format(text_, options).text;
}

std::string ListText(std::size_t column, const std::vector<std::string>& numbers) {
  std::string text;
  const char* before = " ";
  for (const std::string& number : numbers) {
    if (column > kLineWidth) {
      text += ", \\\n";
      before = "    ";
      column = 0;
    }
    text += before + number;
    column += number.size() + 2;
    before = ", ";
  }
  return text;
}

std::string HexText(std::uint32_t number) { return fmt::format("0x{:X}", number); }

}  // namespace rux::imports
