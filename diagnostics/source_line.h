// A line of a source file, to find the offending text of a diagnostic in.
#ifndef DIAGNOSTICS_SOURCE_LINE_H_
#define DIAGNOSTICS_SOURCE_LINE_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "sources/source_view.h"
#include "support/utf8.h"

namespace rux::diagnostics {

// What a diagnostic is about on its line.
enum class Focus {
  kMentioned,     // what it mentions
  kLaterParts,    // the parts of the value behind the first
  kBusType,       // of an access to a bus
  kBaseAddress,   // the same
  kBehindHeader,  // what follows a header
  kOpenQuote,     // a quote that is not closed
  kZeroByte,
};

struct Meant {
  const std::vector<Argument>& mentioned;
  std::optional<std::size_t> value_at = std::nullopt;  // where in the value it begins, if known
  std::size_t ordinal = 0;                             // of several parts that are alike, in turns
  Focus focus = Focus::kMentioned;
};

// The line with those that backslashes join to it. It may be long and be the place of many
// diagnostics, so what stands in it is looked up and not searched for.
class SourceLine {
 public:
  SourceLine(const sources::SourceFile& file, std::uint32_t line);
  SourceLine(const SourceLine&) = delete;
  SourceLine& operator=(const SourceLine&) = delete;

  bool Is(const sources::SourceFile& file, std::uint32_t line) const {
    return &file == &file_ && line == line_;
  }
  std::size_t size() const { return text_.size(); }

  // Underlined is, of an item, the first of the mentioned texts that stands in the value, else the
  // key; of a header, what is mentioned, else the header; else the whole line.
  Excerpt Underline(const Meant& meant);

 private:
  struct Range {
    std::size_t begin;
    std::size_t length;
  };
  struct Piece {
    std::uint32_t line;
    std::size_t start;  // in the joined text
    std::string_view text;
    support::CharacterCounts characters;
  };
  // A part of the item's value.
  struct Part {
    std::size_t value_at;
    std::string_view text;  // in text_
  };

  void Join();
  void FindParts(const reader::Item& item);
  Range RangeOf(const Meant& meant);
  Range RangeInItem(const reader::Item& item, const Meant& meant);
  Range RangeOfHeader() const;
  Range RangeOfAll() const;
  Range RangeFrom(std::size_t begin) const;
  Range RangeOf(std::string_view text) const;
  std::optional<Range> FindFocus(Focus focus) const;
  std::optional<Range> RangeOfParts(std::size_t first, std::size_t last) const;
  std::optional<Range> FindPart(std::size_t value_at) const;
  std::optional<Range> FindMentioned(const Meant& meant);
  std::optional<Range> FindText(std::string_view text, std::size_t ordinal);
  Excerpt ExcerptOf(Range range) const;

  const sources::SourceFile& file_;
  const std::uint32_t line_;
  const std::optional<sources::SourceSpot> spot_;
  std::vector<Piece> pieces_;
  std::string joined_;                           // empty when there is nothing to join
  std::string_view text_;                        // the joined text, or the one piece
  std::size_t searched_from_ = 0;                // where the value or the header begins
  std::vector<Part> parts_;                      // as they stand
  std::vector<std::string_view> parts_by_text_;  // sorted when they are first asked for
};

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_SOURCE_LINE_H_
