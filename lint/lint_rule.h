// What rules of style are made from.
#ifndef LINT_LINT_RULE_H_
#define LINT_LINT_RULE_H_

#include <functional>
#include <memory>
#include <vector>

#include "lint/lint_rows.h"
#include "rules/rule.h"
#include "rules/script_item.h"
#include "settings/limit_rule.h"
#include "settings/lint_settings.h"

namespace rux::lint {

namespace language = ruxcomp::language;

// Whether all that uses what a file defines is known: the machine has no errors, and no other one
// includes the file.
using KnowsUses = std::function<bool(const rules::ScriptFile& file)>;

struct LintContext : rules::RuleContext {
  const settings::LintSettings& settings;
  const std::vector<settings::LimitRule>& limits;
  const KnowsUses& knows_uses;
};

// Null when the settings do not ask for the rule.
using MakeLintRule = std::unique_ptr<rules::Rule> (*)(const LintContext& context);

}  // namespace rux::lint

#endif  // LINT_LINT_RULE_H_
