// Rules of style: what a team may want of its scripts beside their being right.
#ifndef LINT_LINT_H_
#define LINT_LINT_H_

#include <functional>
#include <memory>
#include <vector>

#include "findings/message_row.h"
#include "lint/lint_rule.h"
#include "rules/rule.h"
#include "settings/project.h"

namespace rux::lint {

// What decides which rules there are. All must outlive the rules.
struct LintChoice {
  const settings::Project& project;
  KnowsUses knows_uses;
  // Whether a warning would be shown or counted: the others are not looked for.
  std::function<bool(const ruxcomp::findings::MessageRow& row)> is_wanted;
};

std::vector<std::unique_ptr<rules::Rule>> MakeRules(const rules::RuleContext& context,
                                                    const LintChoice& choice);

}  // namespace rux::lint

#endif  // LINT_LINT_H_
