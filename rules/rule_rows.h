// The rules by name, and their rows among all messages.
#ifndef RULES_RULE_ROWS_H_
#define RULES_RULE_ROWS_H_

#include <cstddef>

#include "findings/message_row.h"

namespace rux::rules {

// In the order of the rows of rule_rows.def.
enum class RuleId {
#define RULE(name, id, summary, explanation, wrong, right) k##name,
#include "rules/rows/rule_rows.def"
};

namespace rows {
#define RULE(name, id, ...)                                                              \
  inline constexpr findings::MessageRow k##name = {"", id, findings::Severity::kWarning, \
                                                   __VA_ARGS__};
#include "rules/rows/rule_rows.def"
}  // namespace rows

// By RuleId.
inline constexpr const findings::MessageRow* kRows[] = {
#define RULE(name, ...) &rows::k##name,
#include "rules/rows/rule_rows.def"
};

constexpr const findings::MessageRow& RowOf(RuleId rule) {
  return *kRows[static_cast<std::size_t>(rule)];
}

}  // namespace rux::rules

#endif  // RULES_RULE_ROWS_H_
