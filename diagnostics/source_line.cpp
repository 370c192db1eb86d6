#include "diagnostics/source_line.h"

#include <algorithm>
#include <functional>

#include "sources/sub_strings.h"

namespace rux::diagnostics {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t";

bool Mentions(const std::vector<Argument>& mentioned, std::string_view word) {
  return std::any_of(mentioned.begin(), mentioned.end(), [&](const Argument& argument) {
    const auto* text = std::get_if<std::string>(&argument);
    return text != nullptr && *text == word;
  });
}

// By text, and as they stand where they are alike.
bool StandsBefore(std::string_view a, std::string_view b) {
  const int order = a.compare(b);
  return order != 0 ? order < 0 : std::less<>()(a.data(), b.data());
}

}  // namespace

SourceLine::SourceLine(const sources::SourceFile& file, std::uint32_t line)
    : file_(file), line_(line), spot_(file.At(line)) {
  Join();
  const bool is_item = spot_ && spot_->item != nullptr;
  const std::size_t at = text_.find(is_item ? '=' : '[');
  searched_from_ = at == std::string_view::npos ? text_.size() : at + 1;
  if (is_item) FindParts(*spot_->item);
}

Excerpt SourceLine::Underline(const Meant& meant) { return ExcerptOf(RangeOf(meant)); }

SourceLine::Range SourceLine::RangeOf(const Meant& meant) {
  if (const auto found = FindFocus(meant.focus)) return *found;
  if (!spot_) return RangeOfAll();
  if (spot_->item != nullptr) return RangeInItem(*spot_->item, meant);
  return FindMentioned(meant).value_or(RangeOfHeader());
}

void SourceLine::Join() {
  std::size_t start = 0;
  bool goes_on = true;
  for (std::uint32_t line = line_; goes_on; ++line) {
    std::string_view piece = file_.Line(line);
    if (line == 1 && piece.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
      piece.remove_prefix(kByteOrderMark.size());
    }
    pieces_.push_back({line, start, piece, support::CharacterCounts(piece)});
    goes_on = line < file_.line_count() && !piece.empty() && piece.back() == '\\';
    start += piece.size() - (goes_on ? 1 : 0);
  }
  if (pieces_.size() > 1) {
    joined_.reserve(start);
    for (const Piece& piece : pieces_) joined_.replace(piece.start, std::string::npos, piece.text);
  }
  text_ = joined_.empty() ? pieces_.front().text : std::string_view(joined_);
}

// The value is what the line has behind the '=', less some zero bytes.
void SourceLine::FindParts(const reader::Item& item) {
  const std::string_view value = item.value;
  std::size_t at = searched_from_;
  std::size_t next = 0;  // the character of the value that is to be found from there on
  for (const std::string_view part : sources::SubStrings(item)) {
    const auto begin = static_cast<std::size_t>(part.data() - value.data());
    for (; next < begin && at != std::string_view::npos; ++next) {
      at = text_.find(value[next], at);
      if (at != std::string_view::npos) ++at;
    }
    if (next < value.size()) at = text_.find(value[next], at);
    if (at == std::string_view::npos) return;
    const std::string_view text = text_.substr(at, part.size());
    if (text == part) parts_.push_back({begin, text});
  }
}

std::optional<SourceLine::Range> SourceLine::FindFocus(Focus focus) const {
  std::size_t at = std::string_view::npos;
  switch (focus) {
    case Focus::kMentioned:
      return std::nullopt;
    case Focus::kLaterParts:
      return RangeOfParts(1, parts_.size() - 1);
    case Focus::kBusType:
      return RangeOfParts(3, 3);
    case Focus::kBaseAddress:
      return RangeOfParts(4, 4);
    case Focus::kBehindHeader:
      at = text_.find_first_not_of(kBlanks, std::min(text_.find(']'), text_.size() - 1) + 1);
      break;
    case Focus::kOpenQuote:
      // It runs to the end, so that none follows it.
      at = text_.rfind('"');
      break;
    case Focus::kZeroByte:
      at = text_.find('\0');
      if (at != std::string_view::npos) return Range{at, 1};
      break;
  }
  if (at == std::string_view::npos) return std::nullopt;
  return RangeFrom(at);
}

// None when the value has fewer.
std::optional<SourceLine::Range> SourceLine::RangeOfParts(std::size_t first,
                                                          std::size_t last) const {
  if (first >= parts_.size() || last >= parts_.size()) return std::nullopt;
  const Range begin = RangeOf(parts_[first].text);
  const Range end = RangeOf(parts_[last].text);
  return Range{begin.begin, end.begin + end.length - begin.begin};
}

SourceLine::Range SourceLine::RangeInItem(const reader::Item& item, const Meant& meant) {
  if (meant.value_at) {
    if (const auto found = FindPart(*meant.value_at)) return *found;
  }
  const std::size_t key = text_.find(item.key);
  if (key == std::string_view::npos) return RangeOfAll();
  const Range key_range{key, item.key.size()};
  if (Mentions(meant.mentioned, item.key)) return key_range;
  return FindMentioned(meant).value_or(key_range);
}

SourceLine::Range SourceLine::RangeOfHeader() const {
  const std::size_t opening = text_.find('[');
  const std::size_t closing = text_.find(']');
  if (opening > closing || closing == std::string_view::npos) return RangeOfAll();
  return {opening, closing + 1 - opening};
}

SourceLine::Range SourceLine::RangeOfAll() const {
  const std::size_t begin = text_.find_first_not_of(kBlanks);
  return begin == std::string_view::npos ? Range{0, text_.size()} : RangeFrom(begin);
}

// From there to the last character that is no blank.
SourceLine::Range SourceLine::RangeFrom(std::size_t begin) const {
  return {begin, text_.find_last_not_of(kBlanks) + 1 - begin};
}

SourceLine::Range SourceLine::RangeOf(std::string_view text) const {
  return {static_cast<std::size_t>(text.data() - text_.data()), text.size()};
}

std::optional<SourceLine::Range> SourceLine::FindPart(std::size_t value_at) const {
  const auto found =
      std::lower_bound(parts_.begin(), parts_.end(), value_at,
                       [](const Part& part, std::size_t wanted) { return part.value_at < wanted; });
  if (found == parts_.end() || found->value_at != value_at) return std::nullopt;
  return RangeOf(found->text);
}

// The first of the texts that stands in the value or header.
std::optional<SourceLine::Range> SourceLine::FindMentioned(const Meant& meant) {
  for (const Argument& argument : meant.mentioned) {
    const auto* text = std::get_if<std::string>(&argument);
    if (text == nullptr || text->empty()) continue;
    if (const std::optional<Range> found = FindText(*text, meant.ordinal)) return found;
  }
  return std::nullopt;
}

// Where a text is a part of the value or, failing that, stands anywhere.
std::optional<SourceLine::Range> SourceLine::FindText(std::string_view text, std::size_t ordinal) {
  if (parts_by_text_.size() != parts_.size()) {
    for (const Part& part : parts_) parts_by_text_.push_back(part.text);
    std::sort(parts_by_text_.begin(), parts_by_text_.end(), StandsBefore);
  }
  const auto [first, last] = std::equal_range(parts_by_text_.begin(), parts_by_text_.end(), text);
  if (first != last) {
    const auto alike = static_cast<std::size_t>(last - first);
    return RangeOf(first[static_cast<std::ptrdiff_t>(ordinal % alike)]);
  }
  const std::size_t at = text_.find(text, searched_from_);
  if (at == std::string_view::npos) return std::nullopt;
  return Range{at, text.size()};
}

// The piece that a range begins in, with the part of the range that lies in it.
Excerpt SourceLine::ExcerptOf(Range range) const {
  const auto starts_after = [](std::size_t at, const Piece& piece) { return at < piece.start; };
  const Piece& piece =
      std::upper_bound(pieces_.begin(), pieces_.end(), range.begin, starts_after)[-1];
  const std::size_t begin = std::min(range.begin - piece.start, piece.text.size());
  const std::size_t length = std::min(range.length, piece.text.size() - begin);
  return {piece.line,
          piece.text,
          begin,
          length,
          piece.characters.Before(begin) + 1,
          piece.characters.Before(begin + length) + 1};
}

}  // namespace rux::diagnostics
