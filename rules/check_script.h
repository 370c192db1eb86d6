// Warnings about scripts: what the library accepts silently and then leaves out, or reads otherwise
// than it looks.
#ifndef RULES_CHECK_SCRIPT_H_
#define RULES_CHECK_SCRIPT_H_

#include <functional>
#include <memory>
#include <vector>

#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "rules/rule.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"

namespace rux::rules {

// Messages of the library that the rules report in its place: where something is lost, and not
// where another way of writing compiles to the same.
inline constexpr const ruxcomp::findings::MessageRow* kTakenOver[] = {
    &ruxcomp::findings::rows::kTooManyOperands,
    &ruxcomp::findings::rows::kSmbusAddress,
    &ruxcomp::findings::rows::kSmbusBusType,
};

// The warnings about a script that was read; without the INCLUDEs that lead
// there. The script may have errors: items that the library refuses are passed over. Empty when the
// script is not complete. `more`: makes rules of other rooms.
using MakeMoreRules = std::function<std::vector<std::unique_ptr<Rule>>(const RuleContext&)>;
Warnings CheckScript(const Script& script, Keeping keeping, const MakeMoreRules& more);

}  // namespace rux::rules

#endif  // RULES_CHECK_SCRIPT_H_
