// From the findings of a run to diagnostics.
#ifndef ADVICE_FROM_FINDINGS_H_
#define ADVICE_FROM_FINDINGS_H_

#include <string>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "run/run.h"

namespace rux::advice {

// The diagnostics of what was found up to the check, in order and with their places. What the check
// repeats after the reading, about the same part of the script, is taken once. `script`: its path,
// as it can be opened.
std::vector<diagnostics::Diagnostic> DiagnosticsOf(const run::Result& result,
                                                   const std::string& script);

// The error that the library raised instead of reporting it.
diagnostics::Diagnostic DiagnosticOfRaised(const run::Result& result, const std::string& script);

}  // namespace rux::advice

#endif  // ADVICE_FROM_FINDINGS_H_
