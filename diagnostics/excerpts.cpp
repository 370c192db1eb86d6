#include "diagnostics/excerpts.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "support/utf8.h"

namespace rux::diagnostics {
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
