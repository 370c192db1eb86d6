// The warnings of all rules about a script.
#ifndef RULES_WARNINGS_H_
#define RULES_WARNINGS_H_

#include <vector>

#include "diagnostics/diagnostic.h"
#include "findings/tally.h"

namespace rux::rules {

struct Warnings {
  std::vector<diagnostics::Diagnostic> kept;  // the first ones of each rule, in order
  findings::Tally tally;                      // of all of them
};

}  // namespace rux::rules

#endif  // RULES_WARNINGS_H_
