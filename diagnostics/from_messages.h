// From the library's messages to diagnostics.
#ifndef DIAGNOSTICS_FROM_MESSAGES_H_
#define DIAGNOSTICS_FROM_MESSAGES_H_

#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/output.h"

namespace rux::diagnostics {

// The diagnostics that the messages of one run make, in their order; not located yet. A message
// that the check repeats word for word after the reading is taken once. `accepted` tells that the
// check passed the model: what it still calls errors are warnings then.
std::vector<Diagnostic> DiagnosticsFrom(const std::vector<Message>& messages, bool accepted);

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_FROM_MESSAGES_H_
