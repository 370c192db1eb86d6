// What the values of an action leave out.
#ifndef LINT_ACTION_RULES_H_
#define LINT_ACTION_RULES_H_

#include "index/index.h"
#include "rules/rule.h"

namespace rux::lint {

// Arguments and results that no value of the action uses, and values that none leads to.
void CheckActions(const index::Index& index, const rules::RuleContext& context);

}  // namespace rux::lint

#endif  // LINT_ACTION_RULES_H_
