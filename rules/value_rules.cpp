// Entries that are compiled otherwise than they look.
#include <fmt/format.h>

#include "rules/rule.h"
#include "rules/rule_list.h"
#include "rules/rule_rows.h"
#include "rules/script_item.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"

namespace rux::rules {

void CheckIdWord(const ScriptItem& item, const RuleContext& context) {
  if (!context.words.IsOnlyWord(item.first())) return;
  context.report.Add(RuleId::kIdWord, item,
                     "an ID that is given by a word is not compared with others", item.first());
}

void CheckArgnumberWord(const ScriptItem& item, const RuleContext& context) {
  if (!context.words.IsOnlyWord(item.first())) return;
  context.report.Add(
      RuleId::kArgnumberWord, item,
      [&] {
        return fmt::format("{} is a word and counts as 0 when calls are checked", item.first());
      },
      item.first());
}

void CheckTypeTooLarge(const ScriptItem& item, const RuleContext& context) {
  // The number is compiled into an index.
  if (item.type <= language::kOrdinalMask) return;
  context.report.Add(
      RuleId::kTypeTooLarge, item,
      [&] { return fmt::format("the type {} does not fit into what is compiled", item.type); },
      item.first());
}

void CheckDroppedOperands(const ScriptItem& item, const RuleContext& context) {
  const bool has_no_record = item.record != nullptr && item.record->shape == language::Shape::kNone;
  if (!has_no_record || item.parts.size() < 2) return;
  context.report.Add(
      RuleId::kDroppedOperands, item,
      [&] {
        return fmt::format("values of type {} have no operands: all but the type is dropped",
                           item.type);
      },
      item.parts[1]);
}

}  // namespace rux::rules
