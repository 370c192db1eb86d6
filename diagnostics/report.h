// All that a run reports, and the forms of output.
#ifndef DIAGNOSTICS_REPORT_H_
#define DIAGNOSTICS_REPORT_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "support/text_stream.h"

namespace rux::diagnostics {

struct Report {
  std::string script;                   // the path, as it can be opened from here
  std::vector<Diagnostic> diagnostics;  // located; without those that are shown on request only
  std::size_t errors = 0;               // those that are not shown counted in
  std::size_t warnings = 0;
  std::size_t not_shown = 0;  // errors and warnings
  bool is_complete = true;    // false: the run ended in trouble that is not the script's
};

// What is not shown, and how to have it shown; of a report with such.
std::string NotShownText(const Report& report);

// Writes a report.
using WriteForm = void(const Report& report, support::TextStream& out);

// A form that other programs read.
struct MachineForm {
  std::string_view name;
  WriteForm* write;
};

// Null for an unknown name. "human" is not a machine form.
const MachineForm* FindMachineForm(std::string_view name);

// A line for each diagnostic and note, in the form that compilers print and editors parse:
//   boards/server.rux:12:16: error: [SENSOR] THRESHOLD_FH: hto has not been defined
//   [undefined-word]
WriteForm WriteGccText;

// docs/diagnostics.schema.json
WriteForm WriteJsonReport;

// Static Analysis Results Interchange Format, version 2.1.0.
WriteForm WriteSarifReport;

// Workflow commands: lines that GitHub shows beside the sources.
WriteForm WriteGithubText;

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_REPORT_H_
