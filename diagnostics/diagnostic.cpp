#include "diagnostics/diagnostic.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

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

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The line that a place begins on, with the part of the place that is on it.
Excerpt LineOf(const Location& location) {
  Excerpt excerpt;
  excerpt.line = location.file->LineAt(location.range.begin);
  if (excerpt.line == 0) return excerpt;
  excerpt.text = location.file->Line(excerpt.line);
  std::size_t start = location.file->LineStart(excerpt.line);
  if (excerpt.line == 1 && excerpt.text.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
    excerpt.text.remove_prefix(kByteOrderMark.size());
    start += kByteOrderMark.size();
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
