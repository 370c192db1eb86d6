// Where and in which form a run reports.
#ifndef DIAGNOSTICS_REPORTING_H_
#define DIAGNOSTICS_REPORTING_H_

#include <cstddef>
#include <string>

#include "diagnostics/collection.h"
#include "diagnostics/report.h"
#include "findings/tally.h"

namespace rux::diagnostics {

// The numbers of a summary line.
struct Counts {
  std::size_t errors;
  std::size_t warnings;
};

struct ReportOptions {
  std::string format = "human";  // or the name of a machine form
  std::string file;              // for the machine form; empty: standard output
  std::string color = "auto";    // or "always" or "never"
  // How many errors are shown, and how many warnings. More help no further, and a script of a few
  // megabytes may have millions.
  findings::Most max_errors = 1000;
  bool verbose = false;
  Counts* counts = nullptr;  // receives the numbers instead of a summary line; null: print the line
};

// Whether the output is in colours, for a value of --color.
bool UsesColour(const std::string& color);

// The report of a run with those diagnostics.
Report ReportOf(std::string script, Collection& diagnostics);

// Prints the diagnostics on standard error, with a summary line when `has_summary`. A machine form
// goes to its file or, instead of all that, to standard output. Throws a Failure when a write
// fails.
void WriteReport(const Report& report, bool has_summary, const ReportOptions& options);

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_REPORTING_H_
