#include "diagnostics/diagnostic.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "reader/byte_order_mark.h"
#include "support/nearest.h"
#include "support/safe_text.h"
#include "support/text_file.h"
#include "support/utf8.h"

namespace rux::diagnostics {

Location LocationIn(const support::TextFile& file, support::ByteRange range) {
  return {file.path(), file.LineAt(range.begin), &file, range};
}

const std::string* FirstMentioned(const Diagnostic& diagnostic) {
  for (const Argument& argument : diagnostic.arguments) {
    if (const auto* text = std::get_if<std::string>(&argument)) return text;
  }
  return nullptr;
}

std::string WholeText(const Diagnostic& diagnostic) {
  if (!diagnostic.section) return diagnostic.text;
  const std::string entry = diagnostic.entry ? ' ' + support::Shortened(*diagnostic.entry) : "";
  return '[' + support::Shortened(*diagnostic.section) + ']' + entry + ": " + diagnostic.text;
}

std::string Label(const Diagnostic& diagnostic) {
  return " [" + std::string(diagnostic.row->id) + ']';
}

std::string SuggestionText(const Diagnostic& diagnostic) {
  return "did you mean " + support::Shortened(*diagnostic.suggestion) + '?';
}

namespace {

// Whether the suggestion is what is to be in the place of the meant text.
bool IsReplacement(const Diagnostic& diagnostic) {
  const auto& excerpt = diagnostic.at.excerpt;
  const std::string* wanted = FirstMentioned(diagnostic);
  if (wanted == nullptr && diagnostic.entry) wanted = &*diagnostic.entry;
  return diagnostic.suggestion && excerpt && wanted != nullptr && excerpt->meant() == *wanted;
}

// A part may go on behind a backslash: without that, the lines below would move.
bool IsOnOneLine(const support::TextFile& file, support::ByteRange range) {
  return file.LineAt(range.begin) == file.LineAt(range.end);
}

}  // namespace

std::optional<Fix> FixOf(const Diagnostic& diagnostic) {
  if (!diagnostic.at.excerpt) return std::nullopt;
  if (diagnostic.fix) {
    return IsOnOneLine(*diagnostic.at.file, diagnostic.fix->range) ? diagnostic.fix : std::nullopt;
  }
  if (!IsReplacement(diagnostic)) return std::nullopt;
  const std::string written(diagnostic.at.excerpt->meant());
  const bool is_safe = diagnostic.row->severity == Severity::kError &&
                       support::IsSlipOf(*diagnostic.suggestion, written);
  return Fix{diagnostic.at.range, *diagnostic.suggestion, is_safe};
}

std::string FixText(const Fix& fix, std::string_view replaced) {
  const auto shown = [](std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(" \t\r\n"), text.size());
    const std::size_t end = text.find_last_not_of(" \t\r\n") + 1;
    return support::Shortened(std::string(text.substr(first, std::max(end, first) - first)));
  };
  const std::string before = shown(replaced);
  const std::string after = shown(fix.text);
  if (fix.text.empty()) return "remove " + (before.empty() ? "blanks" : before);
  if (after.empty()) return "insert a line end";
  return before.empty() ? "insert " + after : fmt::format("replace {} with {}", before, after);
}

namespace {

// The line that a place begins on, with the part of the place that is on it.
Excerpt LineOf(const Location& location) {
  Excerpt excerpt;
  excerpt.line = location.file->LineAt(location.range.begin);
  if (excerpt.line == 0) return excerpt;
  excerpt.text = location.file->Line(excerpt.line);
  std::size_t start = location.file->LineStart(excerpt.line);
  if (excerpt.line == 1 && ruxcomp::reader::StartsWithMark(excerpt.text)) {
    excerpt.text.remove_prefix(ruxcomp::reader::kMark.size());
    start += ruxcomp::reader::kMark.size();
  }
  const std::size_t begin = std::max<std::size_t>(location.range.begin, start) - start;
  excerpt.begin = std::min(begin, excerpt.text.size());
  excerpt.length = std::min<std::size_t>(location.range.end - location.range.begin,
                                         excerpt.text.size() - excerpt.begin);
  return excerpt;
}

}  // namespace

void Excerpts::AddTo(std::vector<Diagnostic>& diagnostics) {
  for (Diagnostic& diagnostic : diagnostics) {
    AddTo(diagnostic.at);
    for (Note& note : diagnostic.notes) AddTo(note.at);
  }
}

void Excerpts::AddTo(Location& location) {
  if (location.file == nullptr) return;
  Excerpt excerpt = LineOf(location);
  if (excerpt.text.empty()) return;
  const support::CharacterCounts& characters = CountsOf(location, excerpt);
  excerpt.first_column = characters.Before(excerpt.begin) + 1;
  excerpt.end_column = characters.Before(excerpt.begin + excerpt.length) + 1;
  location.excerpt = excerpt;
}

// Long ones are kept: diagnostics may be about several of them in turns.
const support::CharacterCounts& Excerpts::CountsOf(const Location& location,
                                                   const Excerpt& excerpt) {
  constexpr std::size_t kLong = 1000;
  const Line line{location.file, excerpt.line};
  if (excerpt.text.size() >= kLong)
    return long_lines_.try_emplace(line, excerpt.text).first->second;
  if (line != last_) {
    last_ = line;
    last_counts_ = std::make_unique<support::CharacterCounts>(excerpt.text);
  }
  return *last_counts_;
}

}  // namespace rux::diagnostics
