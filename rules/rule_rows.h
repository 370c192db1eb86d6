// The rules by name, and their rows among all messages.
#ifndef RULES_RULE_ROWS_H_
#define RULES_RULE_ROWS_H_

#include <vector>

#include "diagnostics/messages/messages.h"

namespace rux::rules {

// In the order of the rows of rule_rows.def.
enum class RuleId {
#define RULE(name, id, summary, explanation, wrong, right) k##name,
#include "rules/rows/rule_rows.def"
};

const std::vector<diagnostics::MessageRow>& RuleRows();

inline const diagnostics::MessageRow& RowOf(RuleId rule) {
  return RuleRows()[static_cast<std::size_t>(rule)];
}

}  // namespace rux::rules

#endif  // RULES_RULE_ROWS_H_
