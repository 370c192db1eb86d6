#include "sources/allow_comments.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "reader/script.h"
#include "reader/value.h"
#include "sources/source_file.h"
#include "support/text_file.h"

namespace rux::sources {
namespace {

using ruxcomp::reader::IsBlank;
using ruxcomp::reader::IsCommentLine;
using ruxcomp::reader::IsCommentSign;
using support::ByteRange;

constexpr std::size_t kNone = std::string_view::npos;

// Whether nothing but the sign of a comment is there. A backslash may have joined lines before it.
bool BeginsComment(std::string_view text) {
  constexpr std::string_view kBlank = " \t\\\r\n";
  const std::size_t sign = text.find_first_not_of(kBlank);
  if (sign == kNone || !IsCommentSign(text[sign])) return false;
  const std::string_view comment = text.substr(sign);
  return std::all_of(comment.begin(), comment.end(),
                     [](char c) { return IsCommentSign(c) || IsBlank(c); });
}

// The ids after the marker, up to what no comma joins to them.
std::vector<std::string_view> IdsIn(std::string_view text) {
  std::vector<std::string_view> ids;
  while (true) {
    text = ruxcomp::reader::Trim(text);
    const std::size_t end = std::min(text.find_first_of(", \t"), text.size());
    if (end != 0) ids.push_back(text.substr(0, end));
    text = ruxcomp::reader::Trim(text.substr(end));
    if (text.empty() || text.front() != ',') return ids;
    text.remove_prefix(1);
  }
}

class Finder {
 public:
  explicit Finder(const SourceFile& file) : file_(file), text_(file.text()) {}

  std::vector<AllowComment> Find() {
    for (std::size_t at = text_.find(kAllowMarker); at != kNone;
         at = text_.find(kAllowMarker, at + 1)) {
      Add(static_cast<std::uint32_t>(at));
    }
    return std::move(found_);
  }

 private:
  void Add(std::uint32_t at) {
    const auto end = static_cast<std::uint32_t>(at + kAllowMarker.size());
    const std::uint32_t line = file_.LineAt(at);
    const std::string_view whole = file_.Line(line);
    const std::string_view rest = whole.substr(end - file_.LineStart(line));
    // A longer word is another one.
    if (!rest.empty() && !IsBlank(rest.front())) return;
    if (at >= joined_.end) joined_ = file_.JoinedLines(line);
    const std::uint32_t first = file_.LineAt(joined_.begin);
    const std::optional<SourceSpot> spot = file_.At(first);
    const std::uint32_t taken = spot ? EndOf(*spot) : joined_.begin;
    const bool is_first = taken == 0 && !spot;
    if (at < taken || !BeginsComment(WithoutMark(text_.substr(taken, at - taken), is_first)))
      return;
    AllowComment& added = found_.emplace_back();
    added.range = {at, end};
    added.ids = IdsIn(rest);
    if (spot) {
      added.scope = AllowScope::kLine;
      added.allowed = joined_;
    } else {
      SetScope(line, added);
    }
  }

  static std::string_view WithoutMark(std::string_view text, bool is_first) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    return is_first && text.substr(0, kMark.size()) == kMark ? text.substr(kMark.size()) : text;
  }

  // Where what the reader took from a line ends.
  std::uint32_t EndOf(const SourceSpot& spot) const {
    if (spot.item == nullptr) return file_.RangeOf(spot.section->header).end;
    return std::max(file_.RangeOf(spot.item->key).end, file_.RangeOf(spot.item->value).end);
  }

  // Of a comment on a line of its own.
  void SetScope(std::uint32_t line, AllowComment& comment) {
    if (file_.SectionAt(line) == nullptr) {
      comment.scope = AllowScope::kFile;
      comment.allowed = {0, static_cast<std::uint32_t>(text_.size())};
      return;
    }
    FindBlock(line);
    const ruxcomp::reader::Section* section = HeaderOn(block_last_ + 1);
    if (section == nullptr) section = HeaderOn(block_first_ - 1);
    comment.scope = section == nullptr ? AllowScope::kNowhere : AllowScope::kSection;
    if (section != nullptr) comment.allowed = RangeOf(*section);
  }

  // Finds the lines with comments around a line with one.
  void FindBlock(std::uint32_t line) {
    if (line <= block_last_) return;
    block_first_ = block_last_ = line;
    while (block_first_ > 1 && IsCommentLine(file_.Line(block_first_ - 1))) --block_first_;
    while (IsCommentLine(file_.Line(block_last_ + 1))) ++block_last_;
  }

  const ruxcomp::reader::Section* HeaderOn(std::uint32_t line) const {
    const std::optional<SourceSpot> spot = file_.At(line);
    return spot && spot->item == nullptr ? spot->section : nullptr;
  }

  ByteRange RangeOf(const ruxcomp::reader::Section& section) const {
    const auto ordinal = static_cast<std::size_t>(&section - file_.sections().data());
    const bool is_last = ordinal + 1 == file_.sections().size();
    return {file_.LineStart(section.line),
            is_last ? static_cast<std::uint32_t>(text_.size())
                    : file_.LineStart(file_.sections()[ordinal + 1].line)};
  }

  const SourceFile& file_;
  const std::string_view text_;
  ByteRange joined_;               // the line that was looked at last
  std::uint32_t block_first_ = 0;  // the comment lines that were found last
  std::uint32_t block_last_ = 0;
  std::vector<AllowComment> found_;
};

}  // namespace

std::vector<AllowComment> AllowCommentsOf(const SourceFile& file) { return Finder(file).Find(); }

}  // namespace rux::sources
