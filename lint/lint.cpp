#include "lint/lint.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "lint/lint_list.h"
#include "lint/lint_rows.h"
#include "lint/lint_rule.h"
#include "rules/rule.h"

namespace rux::lint {

std::vector<std::unique_ptr<rules::Rule>> MakeRules(const rules::RuleContext& context,
                                                    const LintChoice& choice) {
  const LintContext with_settings{context, choice.project.lint, choice.project.limits,
                                  choice.knows_uses};
  std::vector<std::unique_ptr<rules::Rule>> made;
  for (const ListedRule& listed : kRules) {
    const bool is_wanted = std::any_of(listed.ids.begin(), listed.ids.end(),
                                       [&](RuleId id) { return choice.is_wanted(RowOf(id)); });
    if (!is_wanted) continue;
    std::unique_ptr<rules::Rule> rule = listed.make(with_settings);
    if (rule != nullptr) made.push_back(std::move(rule));
  }
  return made;
}

}  // namespace rux::lint
