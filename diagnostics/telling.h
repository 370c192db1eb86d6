// How a run tells what it has to tell.
#ifndef DIAGNOSTICS_TELLING_H_
#define DIAGNOSTICS_TELLING_H_

#include <cstddef>
#include <string>
#include <vector>

#include "diagnostics/report.h"

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
  std::size_t max_errors = 0;    // 0: all
  bool verbose = false;
  Counts* counts = nullptr;  // gets what would be told as the summary; null: tell it
};

// Whether people are told in colours, for a value of --color.
bool UsesColour(const std::string& color);

// The report of a run with those diagnostics, of which nothing more is shown after the last error
// that is allowed.
Report ReportOf(std::string script, std::vector<Diagnostic> diagnostics,
                const TellingOptions& options);

// People are told on standard error, and so is the summary when `has_summary`; unless a machine
// form takes their place on standard output. Throws a Failure when it does not get out.
void Tell(const Report& report, bool has_summary, const TellingOptions& options);

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_TELLING_H_
