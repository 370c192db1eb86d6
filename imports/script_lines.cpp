#include "imports/script_lines.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace rux::imports {
namespace {

bool IsComment(const ScriptLine& line) {
  return !line.is_blank() && (line.meaning.front() == '#' || line.meaning.front() == ';');
}

bool IsHeader(const ScriptLine& line) {
  return !line.is_blank() && line.meaning.front() == '[' && line.meaning.back() == ']';
}

std::string MeaningOf(std::string_view line) {
  std::string meaning;
  for (const char c : line) {
    const bool is_blank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
    if (!is_blank)
      meaning += c;
    else if (!meaning.empty() && meaning.back() != ' ')
      meaning += ' ';
  }
  if (!meaning.empty() && meaning.back() == ' ') meaning.pop_back();
  return meaning;
}

std::vector<ScriptLine> LinesOf(std::string_view text) {
  std::vector<ScriptLine> lines;
  while (!text.empty()) {
    std::size_t end = text.find('\n');
    while (end != std::string_view::npos && end > 0 && text[end - 1] == '\\')
      end = text.find('\n', end + 1);
    const std::size_t size = end == std::string_view::npos ? text.size() : end + 1;
    lines.push_back({text.substr(0, size), MeaningOf(text.substr(0, size)), ""});
    text.remove_prefix(size);
  }
  return lines;
}

// The key of an item that has one of its own; otherwise the whole line.
std::string KeyOf(const ScriptLine& line) {
  const std::size_t end = line.meaning.find(" =");
  const std::string key = line.meaning.substr(0, end);
  return IsComment(line) || key == "FILE" ? line.meaning : key;
}

// "[SENSOR] CPU0_TEMP"
std::string KeyOf(const ScriptPart& part) {
  std::string key;
  for (const ScriptLine& line : part.lines) {
    constexpr std::string_view kName = "NAME = ";
    if (IsHeader(line)) key = line.meaning;
    if (line.meaning.compare(0, kName.size(), kName) == 0)
      return key + ' ' + line.meaning.substr(kName.size());
  }
  return key;
}

// Gives each its key; of those with the same one, the second gets another one, and so on.
template <class Units>
void SetKeys(Units& units) {
  std::map<std::string, std::size_t> counts;
  for (auto& unit : units) {
    unit.key = KeyOf(unit);
    const std::size_t count = ++counts[unit.key];
    if (count > 1) unit.key += '\n' + std::to_string(count);
  }
}

}  // namespace

bool ScriptPart::operator==(const ScriptPart& other) const {
  const auto next = [](const std::vector<ScriptLine>& all, std::size_t at) {
    while (at < all.size() && all[at].is_blank()) ++at;
    return at;
  };
  std::size_t i = next(lines, 0);
  std::size_t j = next(other.lines, 0);
  while (i < lines.size() && j < other.lines.size()) {
    if (!(lines[i] == other.lines[j])) return false;
    i = next(lines, i + 1);
    j = next(other.lines, j + 1);
  }
  return i == lines.size() && j == other.lines.size();
}

std::vector<ScriptPart> PartsOf(std::string_view text) {
  std::vector<ScriptPart> parts(1);
  for (ScriptLine& line : LinesOf(text)) {
    if (IsHeader(line)) {
      std::vector<ScriptLine>& before = parts.back().lines;
      const auto comments = std::find_if_not(before.rbegin(), before.rend(), IsComment).base();
      ScriptPart part;
      part.lines.assign(std::make_move_iterator(comments), std::make_move_iterator(before.end()));
      before.erase(comments, before.end());
      parts.push_back(std::move(part));
    }
    parts.back().lines.push_back(std::move(line));
  }
  for (ScriptPart& part : parts) SetKeys(part.lines);
  SetKeys(parts);
  return parts;
}

}  // namespace rux::imports
