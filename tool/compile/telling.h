// How a run tells what it has to tell.
#ifndef TOOL_COMPILE_TELLING_H_
#define TOOL_COMPILE_TELLING_H_

#include <cstddef>
#include <string>
#include <vector>

#include "tool/diagnostics/report.h"

namespace rux {

struct TellingOptions {
  std::string format = "human";  // or the name of a machine form
  std::string file;              // for the machine form; empty: standard output
  std::string color = "auto";    // or "always" or "never"
  std::size_t max_errors = 0;    // 0: all
  bool verbose = false;
};

// The report of a run with those diagnostics, of which nothing more is shown after the last error
// that is allowed.
Report ReportOf(std::string script, std::vector<Diagnostic> diagnostics,
                const TellingOptions& options);

// People are told on standard error, and so is the summary when `has_summary`; unless a machine
// form takes their place on standard output. Throws a Failure when it does not get out.
void Tell(const Report& report, bool has_summary, const TellingOptions& options);

}  // namespace rux

#endif  // TOOL_COMPILE_TELLING_H_
