// A scanned script: sections and items, and where they are in the file.
//
// clang-format off
//   # a comment                     lines end in LF or CRLF; a leading byte order mark is skipped
//   [SENSOR]                        opens a section; blanks (space, tab) in the brackets are dropped
//   NAME = "CPU 0, core"            an item, split at the first '=' outside double quotes
//   VALUE = VT_READ , G_X  ; why    outside double quotes, blanks around commas are dropped on
//                                   delivery, and a '#' or ';' after a blank starts a comment
//   SENSORS = 1, 2, \               a backslash at the end of a line joins the next line
//             3
// clang-format on
//
// Quotes stay in the text. A line without '=' is a key without value. Nothing is reordered, merged
// or judged: what keys and values mean is not known here.
#ifndef READER_SCRIPT_H_
#define READER_SCRIPT_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "findings/messages.h"
#include "reader/arena.h"
#include "reader/recorded_line.h"

namespace ruxcomp::reader {

// The most bytes that a script may have. The bound keeps a device or an endless pipe from taking
// all memory.
inline constexpr std::size_t kLargestScript = std::size_t{1} << 30;

// Bytes of the file, from `begin` to before `end`.
struct Range {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;

  std::uint32_t size() const { return end - begin; }
  bool operator==(const Range& other) const { return begin == other.begin && end == other.end; }
};

struct Item {
  std::string_view key;            // never empty
  std::string_view value;          // as written; empty when the line has no '=' or nothing after it
  std::uint32_t line;              // from 1; the first one of joined lines
  std::uint32_t blanks_at_commas;  // how many bytes of the value are not delivered (value.h)
};

struct Section {
  std::string_view name;    // may be empty
  std::string_view header;  // with its brackets
  std::uint32_t line;
  std::uint32_t item_count;
  const Item* items;  // item_count of them, in script order
};

// The place of an item in its script.
struct ItemPlace {
  std::size_t section;  // its place in Script::sections()
  std::size_t item;     // its place in the section
};

struct Problem {
  findings::MessageId message;
  std::uint32_t line;
  Range range;  // the bytes that are wrong
};

using ProblemSink = std::function<void(const Problem& problem)>;

// Owns its text, unchanged from the file. Names, keys and values point into the text or, where
// joined lines or dropped bytes interrupt them, into the script's arena. So a script cannot be
// moved.
class Script {
 public:
  // Scans `text`, which has at most kLargestScript bytes, in one pass. Problems are reported in the
  // order of their lines and lose no more than their message says:
  //
  //   text before the first section   dropped; reported at its first line only
  //   header without ']'              the section is opened with what there is
  //   text after the ']'              dropped
  //   item without a key              dropped
  //   quote without its end           the rest of the line belongs to the quote
  //   NUL bytes                       dropped; reported once per line
  Script(std::string text, const ProblemSink& report);
  // The same, with every line for the recorder.
  Script(std::string text, const ProblemSink& report, const LineRecorder& record);
  Script(const Script&) = delete;
  Script& operator=(const Script&) = delete;

  const std::string& text() const { return text_; }
  const std::vector<Section>& sections() const { return sections_; }

  // Releases the sections and items, which take more memory than the text; the text and its lines
  // stay. ScanAgain makes the same ones again.
  void DropSections();
  void ScanAgain();

  // Whether the item belongs to one of these sections and is not a copy; and if so, its place.
  bool Holds(const Item& item) const;
  ItemPlace PlaceOf(const Item& item) const;

  // Where a name, header, key, value or part of a value is in the file: from its first byte to its
  // last, with the line ends and dropped bytes between them. The range of an empty one is empty and
  // follows the byte before it.
  Range RangeOf(std::string_view view) const;

  // The lines as they are in the file. A line feed at the end of the text starts no further line.
  std::uint32_t line_count() const { return static_cast<std::uint32_t>(LineStarts().size()); }
  // The number, from 1, of the line that has the byte at `offset` or, after the last byte, of the
  // last line; 0 for an empty text.
  std::uint32_t LineAt(std::size_t offset) const;
  // Of a line from 1 to line_count(): the offset of its first byte; its text without the line end.
  std::uint32_t LineStart(std::uint32_t line) const { return LineStarts()[line - 1]; }
  std::string_view Line(std::uint32_t line) const;
  // All of the line and of those that backslashes join to it, without the end of the last one.
  Range JoinedLines(std::uint32_t line) const;

 private:
  void Reserve();
  std::uint32_t OffsetOf(std::string_view line) const;
  const std::vector<std::uint32_t>& LineStarts() const;

  const std::string text_;
  Arena arena_;
  std::vector<Section> sections_;
  std::vector<Item> items_;
  mutable std::vector<std::uint32_t> line_starts_;  // found when they are first asked for
};

}  // namespace ruxcomp::reader

#endif  // READER_SCRIPT_H_
