// What helps people to understand the diagnostics of a script.
#ifndef ADVICE_ADVICE_H_
#define ADVICE_ADVICE_H_

#include <string>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"
#include "run/run.h"

namespace rux::advice {

inline constexpr findings::MessageRow kUnreadIncludes = {
    "",
    "unread-includes",
    findings::Severity::kNote,
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
inline constexpr const findings::MessageRow* kRows[] = {&kUnreadIncludes};

// Fills in the INCLUDEs that lead to what the rules have found, and the place of what is about the
// script as a whole.
void CompletePlaces(const run::Result& result, const std::string& script,
                    std::vector<diagnostics::Diagnostic>& diagnostics);

// Adds to all that a run and the rules have found: what was probably meant by a name that does not
// exist, the other place that a message is about, and what its text leaves open.
void Advise(const run::Result& result, std::vector<diagnostics::Diagnostic>& diagnostics);

// Adds why files could not be included and, when there are errors, a note at the end that counts
// these files.
void AddNotesOnIncludes(const run::Result& result,
                        std::vector<diagnostics::Diagnostic>& diagnostics);

}  // namespace rux::advice

#endif  // ADVICE_ADVICE_H_
