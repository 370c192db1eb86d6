#include "tool/diagnostics/source_line.h"

#include <algorithm>

namespace rux {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kSeparators = " \t,\"=[]\\";

bool Mentions(const std::vector<Argument>& mentioned, std::string_view word) {
  return std::any_of(mentioned.begin(), mentioned.end(), [&](const Argument& argument) {
    const auto* text = std::get_if<std::string>(&argument);
    return text != nullptr && *text == word;
  });
}

}  // namespace

SourceLine::SourceLine(const SourceFile& file, std::uint32_t line)
    : file_(file), line_(line), spot_(file.At(line)) {
  Join();
  const char opening = spot_ && spot_->item != nullptr ? '=' : '[';
  const std::size_t at = text_.find(opening);
  searched_from_ = at == std::string_view::npos ? text_.size() : at + 1;
  NoteWords(searched_from_);
}

Excerpt SourceLine::Underline(const std::vector<Argument>& mentioned) const {
  if (!spot_) return ExcerptOf(RangeOfAll());
  if (spot_->item != nullptr) return ExcerptOf(RangeInItem(*spot_->item, mentioned));
  return ExcerptOf(FindMentioned(mentioned).value_or(RangeOfHeader()));
}

void SourceLine::Join() {
  std::size_t start = 0;
  bool goes_on = true;
  for (std::uint32_t line = line_; goes_on; ++line) {
    std::string_view piece = file_.Line(line);
    if (line == 1 && piece.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
      piece.remove_prefix(kByteOrderMark.size());
    }
    pieces_.push_back({line, start, piece});
    goes_on = line < file_.line_count() && !piece.empty() && piece.back() == '\\';
    start += piece.size() - (goes_on ? 1 : 0);
  }
  if (pieces_.size() > 1) {
    joined_.reserve(start);
    for (const Piece& piece : pieces_) joined_.replace(piece.start, std::string::npos, piece.text);
  }
  text_ = joined_.empty() ? pieces_.front().text : std::string_view(joined_);
}

void SourceLine::NoteWords(std::size_t from) {
  for (std::size_t begin = from; begin < text_.size();) {
    begin = std::min(text_.find_first_not_of(kSeparators, begin), text_.size());
    const std::size_t end = std::min(text_.find_first_of(kSeparators, begin), text_.size());
    if (begin < end) words_.emplace(text_.substr(begin, end - begin), begin);
    begin = end;
  }
}

SourceLine::Range SourceLine::RangeInItem(const reader::Item& item,
                                          const std::vector<Argument>& mentioned) const {
  const std::size_t key = text_.find(item.key);
  if (key == std::string_view::npos) return RangeOfAll();
  const Range key_range{key, item.key.size()};
  if (Mentions(mentioned, item.key)) return key_range;
  return FindMentioned(mentioned).value_or(key_range);
}

SourceLine::Range SourceLine::RangeOfHeader() const {
  const std::size_t opening = text_.find('[');
  const std::size_t closing = text_.find(']');
  if (opening > closing || closing == std::string_view::npos) return RangeOfAll();
  return {opening, closing + 1 - opening};
}

SourceLine::Range SourceLine::RangeOfAll() const {
  const std::size_t begin = text_.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {0, text_.size()};
  return {begin, text_.find_last_not_of(kBlanks) + 1 - begin};
}

// The first of the texts that stands in the value or header.
std::optional<SourceLine::Range> SourceLine::FindMentioned(
    const std::vector<Argument>& mentioned) const {
  for (const Argument& argument : mentioned) {
    const auto* word = std::get_if<std::string>(&argument);
    if (word == nullptr || word->empty()) continue;
    if (const std::optional<Range> found = FindWord(*word)) return found;
  }
  return std::nullopt;
}

// Where a text stands by itself or, failing that, inside others.
std::optional<SourceLine::Range> SourceLine::FindWord(std::string_view word) const {
  const auto found = words_.find(word);
  const std::size_t at = found != words_.end() ? found->second : text_.find(word, searched_from_);
  if (at == std::string_view::npos) return std::nullopt;
  return Range{at, word.size()};
}

// The piece that a range begins in, with the part of the range that lies in it.
Excerpt SourceLine::ExcerptOf(Range range) const {
  const auto starts_after = [](std::size_t at, const Piece& piece) { return at < piece.start; };
  const Piece& piece =
      std::upper_bound(pieces_.begin(), pieces_.end(), range.begin, starts_after)[-1];
  const std::size_t begin = range.begin - piece.start;
  const std::size_t most = piece.text.size() - std::min(begin, piece.text.size());
  return {piece.line, piece.text, begin, std::min(range.length, most)};
}

}  // namespace rux
