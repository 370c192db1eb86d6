// From the findings of a run to diagnostics.
#ifndef ADVICE_FROM_FINDINGS_H_
#define ADVICE_FROM_FINDINGS_H_

#include <string>

#include "diagnostics/collection.h"
#include "diagnostics/diagnostic.h"
#include "run/run.h"

namespace rux::advice {

// Adds what was found up to the check, in order and with places. `script`: its path, as it can be
// opened.
void AddDiagnosticsOf(const run::Result& result, const std::string& script,
                      diagnostics::Collection& collection);

// The error that the library raised instead of reporting it.
diagnostics::Diagnostic DiagnosticOfRaised(const run::Result& result, const std::string& script);

}  // namespace rux::advice

#endif  // ADVICE_FROM_FINDINGS_H_
