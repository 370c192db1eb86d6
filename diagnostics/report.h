// All that a run tells, and the forms to tell it in.
#ifndef DIAGNOSTICS_REPORT_H_
#define DIAGNOSTICS_REPORT_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/diagnostic.h"

namespace rux::diagnostics {

struct Report {
  std::string script;                   // the path, as it can be opened from here
  std::vector<Diagnostic> diagnostics;  // located; what is only told on request is not in it
  std::size_t errors = 0;               // those that are not shown counted in
  std::size_t warnings = 0;
  std::size_t not_shown = 0;  // errors and warnings
  bool is_complete = true;    // false: the run ended in trouble that is not the script's
};

// A form that other programs read.
struct MachineForm {
  std::string_view name;
  std::string (*text)(const Report& report);
};

// Null when there is none of that name. "human" is none of them.
const MachineForm* FindMachineForm(std::string_view name);

// A line for each diagnostic and note, as compilers tell them and editors take them:
//   boards/server.rux:12:16: error: [SENSOR] THRESHOLD_FH: hto has not been defined
//   [undefined-word]
std::string GccText(const Report& report);

// docs/diagnostics.schema.json
std::string JsonReport(const Report& report);

// Static Analysis Results Interchange Format, version 2.1.0.
std::string SarifReport(const Report& report);

// Workflow commands: lines that GitHub shows beside the sources.
std::string GithubText(const Report& report);

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_REPORT_H_
