// All that a run reports, the forms of output, and where each goes.
#ifndef DIAGNOSTICS_REPORT_H_
#define DIAGNOSTICS_REPORT_H_

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "diagnostics/collection.h"
#include "diagnostics/diagnostic.h"
#include "diagnostics/machine_form.h"
#include "findings/tally.h"
#include "support/text_stream.h"

namespace rux::diagnostics {

// How many there are of a message.
struct MessageCount {
  const MessageRow* row;
  std::size_t all;   // errors and warnings; remarks and notes are not counted
  std::size_t kept;  // of them, those that the report has
};

struct Report {
  std::string script;                   // the path, as it can be opened from here
  std::vector<Diagnostic> diagnostics;  // located; without those that are shown on request only
  std::size_t errors = 0;               // those that are not shown counted in
  std::size_t warnings = 0;
  std::size_t not_shown = 0;             // errors and warnings
  std::size_t suppressed = 0;            // warnings that a setting or a comment leaves out
  std::size_t in_baseline = 0;           // warnings that are not new
  std::vector<MessageCount> by_message;  // the most frequent first
  std::vector<std::string> passed = {};  // the names of what was tested without an error
  // What was tested under, by names; printed by forms that have a place for it.
  std::vector<std::pair<std::string, std::string>> properties = {};
  bool is_one_of_many = false;  // what other scripts may have as well is marked
  bool is_complete = true;      // false: the run ended in trouble that is not the script's
};

// The diagnostic and its notes, in the form gcc.
void WriteGccLines(const Diagnostic& diagnostic, support::TextStream& out);

// "boards/server.rux:12:16", or the tool when the place is nothing of the script.
std::string PlaceText(const Location& at);

// "7 more diagnostics not shown"
std::string NotShown(std::size_t count);
// The same with how to have them shown.
std::string NotShownText(std::size_t count);

// The form for terminals, which editors can jump from:
//   boards/server.rux:12:16: error: [SENSOR] THRESHOLD_FH: hto has not been defined
//   [undefined-word]
//      12 | THRESHOLD_FH = hto
//         |                ^~~
//         = did you mean hot?
//   boards/board.rux:3: note: included from here
//
// and so on. With `folds`, only the first of many equal messages are printed, followed by a
// line that counts the rest; a table of all messages ends the report.
struct HumanStyle {
  bool colour = false;
  bool folds = false;
};
void WriteHumanText(const Report& report, HumanStyle style, support::TextStream& out);

// Whether there are enough of them for a table to help.
bool IsLong(const std::vector<MessageCount>& by_message);

// The messages with how often they occur, a line for each.
std::string MessageTable(const std::vector<MessageCount>& by_message);

// The most frequent first.
void SortByCount(std::vector<MessageCount>& by_message);

// "boards/server.rux: 2 errors, 1 warning (9 suppressed, 5 in the baseline)" with a line feed.
std::string SummaryLine(const Report& report);

// The numbers of a report.
struct Counts {
  std::size_t errors;
  std::size_t warnings;
  std::size_t not_shown;
  std::size_t suppressed;
  std::size_t in_baseline;
  bool is_complete;
  bool is_written;           // the machine form, to its end
  MessageCount* by_message;  // room for all messages; the first one without a row ends it
};

struct ReportOptions {
  std::string format = "human";  // or the name of a machine form
  std::string file;              // for the machine form; empty: standard output
  bool makes_folder = false;     // of the file, when it is not there
  bool is_piece = false;  // of a document about several scripts: to standard output in any case
  std::string color = "auto";  // or "always" or "never"
  // How many errors are shown, and how many warnings. More help no further, and a script of a few
  // megabytes may have millions.
  ruxcomp::findings::Most max_errors = 1000;
  ruxcomp::findings::Most max_warnings = kAsErrors;
  bool all = false;  // no limits, and nothing folded

  static constexpr ruxcomp::findings::Most kAsErrors = static_cast<std::size_t>(-1);
  ruxcomp::findings::Most most_errors() const { return all ? 0 : max_errors; }
  ruxcomp::findings::Most most_warnings() const {
    return all || max_warnings == kAsErrors ? most_errors() : max_warnings;
  }
  // How many of one message are needed for that.
  ruxcomp::findings::Most most() const {
    return shows_all() ? 0 : std::max(most_errors(), most_warnings());
  }
  // Whether a report of one of several scripts marks what others may have, too.
  bool folds_over_scripts() const { return counts != nullptr && !shows_all(); }
  bool shows_all() const { return most_errors() == 0 || most_warnings() == 0; }

  bool verbose = false;
  Counts* counts = nullptr;  // receives the numbers instead of a summary line; null: print the line
};

// Whether the output is in colours, for a value of --color.
bool UsesColour(const std::string& color);

// By file and line; what has no place comes last. For diagnostics with excerpts. Those of one place
// stay in their order. `files`: paths, in the order that they are to have.
void SortByPlace(const std::vector<std::string>& files, std::vector<Diagnostic>& diagnostics);

// The report of a run with those diagnostics, by file and line; what has no place comes last.
// `files`: the paths of the script and what it includes, in the order of reading.
Report ReportOf(std::string script, Collection& diagnostics, const std::vector<std::string>& files);

// Prints the diagnostics on standard error, with a summary line when `has_summary`. A machine form
// goes to its file or, instead of all that, to standard output. A piece of a document with a file
// goes to standard output, too. Throws a Failure when a write fails.
void WriteReport(const Report& report, bool has_summary, const ReportOptions& options);

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_REPORT_H_
