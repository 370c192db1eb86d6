#include "sources/allow_comments.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "reader/byte_order_mark.h"
#include "reader/script.h"
#include "reader/value.h"
#include "sources/comment_marks.h"
#include "sources/source_file.h"
#include "support/text_file.h"

namespace rux::sources {
namespace {

using ruxcomp::reader::IsCommentLine;
using support::ByteRange;

constexpr std::string_view kToolName = kAllowMarker.substr(0, 3);
constexpr std::size_t kNone = std::string_view::npos;

// The ids after the marker, up to what no comma joins to them.
std::vector<std::string_view> IdsIn(std::string_view text) {
  std::vector<std::string_view> ids;
  while (true) {
    text = ruxcomp::reader::Trim(text);
    const std::size_t end = std::min(text.find_first_of(",:; \t"), text.size());
    if (end != 0) ids.push_back(text.substr(0, end));
    text = ruxcomp::reader::Trim(text.substr(end));
    if (text.empty() || text.front() != ',') return ids;
    text.remove_prefix(1);
  }
}

// What was probably meant as the marker, at the beginning of the text: its words in another case,
// without the colon, or with a word for the same. Empty for what is none.
std::string_view MarkerLike(std::string_view text) {
  constexpr std::string_view kVerbs[] = {"allow", "ignore", "disable", "suppress"};
  std::size_t at = text.find_first_not_of(" \t", kToolName.size());
  const bool has_colon = at != kNone && text[at] == ':';
  if (has_colon) at = text.find_first_not_of(" \t", at + 1);
  // Prose may be about the tool.
  if (at == kNone || (!has_colon && at == kToolName.size())) return {};
  for (const std::string_view verb : kVerbs) {
    const std::string_view found = text.substr(at, verb.size());
    const std::string_view rest = text.substr(std::min(at + verb.size(), text.size()));
    const bool is_verb = std::equal(found.begin(), found.end(), verb.begin(), verb.end(),
                                    [](char c, char lower) { return (c | 0x20) == lower; });
    const std::vector<std::string_view> ids = IdsIn(rest);
    const bool has_id = !ids.empty() && ids.front().find('-') != kNone;
    if (is_verb && EndsMark(rest) && (has_colon || has_id)) {
      return text.substr(0, at + verb.size());
    }
  }
  return {};
}

class Finder {
 public:
  explicit Finder(const SourceFile& file) : file_(file), text_(file.text()) {}

  std::vector<AllowComment> Find() {
    FindAfter(kToolName);
    FindAfter("RUX");
    std::stable_sort(found_.begin(), found_.end(), [](const auto& one, const auto& other) {
      return one.range.begin < other.range.begin;
    });
    return std::move(found_);
  }

 private:
  void FindAfter(std::string_view name) {
    joined_ = {};
    block_first_ = block_last_ = 0;
    for (std::size_t at = text_.find(name); at != kNone; at = text_.find(name, at + 1)) {
      const std::size_t line_end = std::min(text_.find_first_of("\r\n", at), text_.size());
      const std::string_view marker = MarkerLike(text_.substr(at, line_end - at));
      if (!marker.empty()) Add(static_cast<std::uint32_t>(at), marker);
    }
  }

  void Add(std::uint32_t at, std::string_view marker) {
    const auto end = static_cast<std::uint32_t>(at + marker.size());
    const std::uint32_t line = file_.LineAt(at);
    const std::string_view whole = file_.Line(line);
    const std::string_view rest = whole.substr(end - file_.LineStart(line));
    if (at >= joined_.end) joined_ = file_.JoinedLines(line);
    const std::uint32_t first = file_.LineAt(joined_.begin);
    const std::optional<SourceSpot> spot = file_.At(first);
    const std::uint32_t taken = spot ? EndOf(*spot) : joined_.begin;
    const bool is_first = taken == 0 && !spot;
    if (at < taken) return;
    const std::string_view before = text_.substr(taken, at - taken);
    if (!BeginsComment(is_first ? ruxcomp::reader::WithoutMark(before) : before)) return;
    AllowComment& added = found_.emplace_back();
    added.range = {at, end};
    if (marker != kAllowMarker) {
      added.instead = marker;
      added.scope = AllowScope::kNowhere;
      return;
    }
    added.ids = IdsIn(rest);
    if (spot) {
      added.scope = AllowScope::kLine;
      added.allowed = joined_;
    } else {
      SetScope(line, added);
    }
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
