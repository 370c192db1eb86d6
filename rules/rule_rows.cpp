#include "rules/rule_rows.h"

#include <string_view>

namespace rux::rules {
namespace {

diagnostics::MessageRow Row(RuleId rule, std::string_view id, std::string_view summary,
                            std::string_view explanation, std::string_view wrong,
                            std::string_view right) {
  const auto first = static_cast<int>(diagnostics::MessageId::kFirstAdded);
  const auto number = static_cast<diagnostics::MessageId>(first + static_cast<int>(rule));
  return {number, id, diagnostics::Severity::kWarning, "", summary, explanation, wrong, right};
}

}  // namespace

const std::vector<diagnostics::MessageRow>& RuleRows() {
  static const std::vector<diagnostics::MessageRow> rows = {
#define RULE(name, ...) Row(RuleId::k##name, __VA_ARGS__),
#include "rules/rows/rule_rows.def"
  };
  return rows;
}

}  // namespace rux::rules
