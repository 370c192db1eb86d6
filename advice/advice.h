// From the findings of a run to diagnostics, with suggestions, second places and notes.
#ifndef ADVICE_ADVICE_H_
#define ADVICE_ADVICE_H_

#include <string>
#include <vector>

#include "diagnostics/collection.h"
#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"
#include "rules/rule_report.h"
#include "run/run.h"

namespace rux::advice {

inline constexpr ruxcomp::findings::MessageRow kUnreadIncludes = {
    "",
    "unread-includes",
    ruxcomp::findings::Level::kNote,
    "errors may come of files that could not be included",
    "Some INCLUDEs could not be read, see missing-include. What stands in those files is missing: "
    "look there first.",
    R"([INCLUDE]
FILE = machin.rux
[GLOBAL]
G_DUTY = VT_CONST, 40
)",
    R"([INCLUDE]
FILE = machine.rux
[GLOBAL]
G_DUTY = VT_CONST, 40
)"};
inline constexpr const ruxcomp::findings::MessageRow* kRows[] = {&kUnreadIncludes};

// Adds an error for each file that is not a script. Answers whether there was one: what else was
// found follows from it.
bool AddFilesThatAreNoScripts(const run::Result& result, const std::string& script,
                              diagnostics::Collection& collection);

// Adds what the rules have found, with the INCLUDEs that lead there and a place for what is about
// the script as a whole. `script`: its path, as it can be opened.
void AddWarnings(const run::Result& result, const std::string& script, rules::Warnings warnings,
                 diagnostics::Collection& collection);

// Adds to what a run and the rules have found: what was probably meant by a name that does not
// exist, the other place that a message is about, and what its text leaves open.
void Advise(const run::Result& result, std::vector<diagnostics::Diagnostic>& diagnostics);

// Adds why files could not be included and, when there are errors, a note at the end that counts
// these files.
void AddNotesOnIncludes(const run::Result& result, diagnostics::Collection& collection);

// Adds what was found up to the check, in order and with places. `script`: its path, as it can be
// opened.
void AddDiagnosticsOf(const run::Result& result, const std::string& script,
                      diagnostics::Collection& collection);

// The error that the library raised instead of reporting it.
diagnostics::Diagnostic DiagnosticOfRaised(const run::Result& result, const std::string& script);

}  // namespace rux::advice

#endif  // ADVICE_ADVICE_H_
