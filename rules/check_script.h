// Warnings about scripts: what the library accepts silently and then leaves out, or reads otherwise
// than it looks.
#ifndef RULES_CHECK_SCRIPT_H_
#define RULES_CHECK_SCRIPT_H_

#include <vector>

#include "diagnostics/diagnostic.h"
#include "rules/script_item.h"

namespace rux::rules {

// The warnings about a script that was read; not located yet. The script may have errors: items
// that the library refuses are passed over. Empty when the script is not complete.
std::vector<diagnostics::Diagnostic> CheckScript(const Script& script);

}  // namespace rux::rules

#endif  // RULES_CHECK_SCRIPT_H_
