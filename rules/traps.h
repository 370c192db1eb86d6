// What the library takes without a word and then leaves out, or reads otherwise than it looks.
#ifndef RULES_TRAPS_H_
#define RULES_TRAPS_H_

#include <vector>

#include "diagnostics/diagnostic.h"
#include "sources/source_set.h"

namespace rux::rules {

// The warnings about a script that was read; not located yet. The script may have errors: items
// that the library refuses are passed over. Empty when the sources cannot all be read again.
std::vector<diagnostics::Diagnostic> FindTraps(const sources::SourceSet& sources);

}  // namespace rux::rules

#endif  // RULES_TRAPS_H_
