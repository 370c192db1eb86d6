// A line of a source file, to find the offending text of a diagnostic in.
#ifndef TOOL_DIAGNOSTICS_SOURCE_LINE_H_
#define TOOL_DIAGNOSTICS_SOURCE_LINE_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tool/compile/source_view.h"
#include "tool/diagnostics/diagnostic.h"

namespace rux {

// The line with those that backslashes join to it. It may be long and be the place of many
// diagnostics, so its words are looked up and not searched for.
class SourceLine {
 public:
  SourceLine(const SourceFile& file, std::uint32_t line);
  SourceLine(const SourceLine&) = delete;
  SourceLine& operator=(const SourceLine&) = delete;

  bool Is(const SourceFile& file, std::uint32_t line) const {
    return &file == &file_ && line == line_;
  }

  // Underlined is, of an item, the first of the mentioned texts that stands in the value, else the
  // key; of a header, what is mentioned, else the header; else the whole line.
  Excerpt Underline(const std::vector<Argument>& mentioned) const;

 private:
  struct Range {
    std::size_t begin;
    std::size_t length;
  };
  struct Piece {
    std::uint32_t line;
    std::size_t start;  // in the joined text
    std::string_view text;
  };

  void Join();
  void NoteWords(std::size_t from);
  Range RangeInItem(const reader::Item& item, const std::vector<Argument>& mentioned) const;
  Range RangeOfHeader() const;
  Range RangeOfAll() const;
  std::optional<Range> FindMentioned(const std::vector<Argument>& mentioned) const;
  std::optional<Range> FindWord(std::string_view word) const;
  Excerpt ExcerptOf(Range range) const;

  const SourceFile& file_;
  const std::uint32_t line_;
  const std::optional<SourceSpot> spot_;
  std::vector<Piece> pieces_;
  std::string joined_;                                       // empty when there is nothing to join
  std::string_view text_;                                    // the joined text, or the one piece
  std::size_t searched_from_ = 0;                            // where the value or the header begins
  std::unordered_map<std::string_view, std::size_t> words_;  // from there on, where each is first
};

}  // namespace rux

#endif  // TOOL_DIAGNOSTICS_SOURCE_LINE_H_
