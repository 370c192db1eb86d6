// What the library takes without a word and then leaves out, or reads otherwise than it looks.
#ifndef TOOL_TRAPS_TRAPS_H_
#define TOOL_TRAPS_TRAPS_H_

#include <vector>

#include "tool/compile/source_view.h"
#include "tool/diagnostics/diagnostic.h"

namespace rux {

// The warnings about a script that was read; not located yet. The script may have errors: items
// that the library refuses are passed over. Empty when the sources cannot all be read again.
std::vector<Diagnostic> FindTraps(const SourceView& sources);

}  // namespace rux

#endif  // TOOL_TRAPS_TRAPS_H_
