// How a run tells what it has to tell.
#ifndef DIAGNOSTICS_TELLING_H_
#define DIAGNOSTICS_TELLING_H_

#include <cstddef>
#include <string>

#include "diagnostics/collection.h"
#include "diagnostics/report.h"
#include "findings/tally.h"

namespace rux::diagnostics {

// What a summary tells.
struct Counts {
  std::size_t errors;
  std::size_t warnings;
};

struct TellingOptions {
  std::string format = "human";  // or the name of a machine form
  std::string file;              // for the machine form; empty: standard output
  std::string color = "auto";    // or "always" or "never"
  // How many errors are shown, and how many warnings. Nobody reads more, and a script of a few
  // megabytes may have millions.
  findings::Most max_errors = 1000;
  bool verbose = false;
  Counts* counts = nullptr;  // gets what would be told as the summary; null: tell it
};

// Whether people are told in colours, for a value of --color.
bool UsesColour(const std::string& color);

// The report of a run with those diagnostics.
Report ReportOf(std::string script, Collection& diagnostics);

// People are told on standard error, and so is the summary when `has_summary`; unless a machine
// form takes their place on standard output. Throws a Failure when it does not get out.
void Tell(const Report& report, bool has_summary, const TellingOptions& options);

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_TELLING_H_
