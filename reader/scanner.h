// The syntax of scripts: text in, sections and items out.
//
// clang-format off
//   # a comment                     lines end in LF or CRLF; a leading byte order mark is skipped
//   [SENSOR]                        opens a section; blanks (space, tab) in the brackets are dropped
//   NAME = "CPU 0, core"            an item, split at the first '=' outside double quotes
//   VALUE = VT_READ , G_X  ; why    outside double quotes, blanks around commas are dropped and a '#'
//                                   or ';' after a blank starts a comment
//   SENSORS = 1, 2, \               a backslash at the end of a line joins the next line
//             3
// clang-format on
//
// Quotes stay in the text. A line without '=' is a key without value. Nothing is reordered, merged
// or judged: what keys and values mean is not known here.
#ifndef READER_SCANNER_H_
#define READER_SCANNER_H_

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace reader {

struct Item {
  std::string_view key;    // never empty
  std::string_view value;  // empty when the line has no '=' or nothing after it
  std::uint32_t line;      // from 1; the first one of joined lines
};

struct Section {
  std::string_view name;  // may be empty
  std::uint32_t line;
  std::uint32_t item_count;
  const Item* items;  // item_count of them, in script order
};

// Is told a format of messages.h and the line that it is about.
using ProblemSink = std::function<void(const char* message, std::uint32_t line)>;

// A scanned script. It owns the text that the names, keys and values point into, so it stays where
// it was made.
class Script {
 public:
  // Scans `text`, which must be shorter than 4 GiB, in one pass and in place. Problems are reported
  // in the order of their lines and lose no more than their message says:
  //
  //   text before the first section   dropped; reported at its first line only
  //   header without ']'              the section is opened with what there is
  //   text after the ']'              dropped
  //   item without a key              dropped
  //   quote without its end           the rest of the line belongs to the quote
  //   NUL bytes                       dropped; reported once per line
  Script(std::string text, const ProblemSink& report);
  Script(const Script&) = delete;
  Script& operator=(const Script&) = delete;

  const std::vector<Section>& sections() const { return sections_; }

 private:
  std::string text_;
  std::vector<Section> sections_;
  std::vector<Item> items_;
};

}  // namespace reader

#endif  // READER_SCANNER_H_
