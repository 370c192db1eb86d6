// Entries that are compiled otherwise than they look.
#include <fmt/format.h>

#include <cstdint>
#include <string_view>

#include "rules/defined_words.h"
#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/spelling.h"
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

namespace {

using language::kArgumentPrefix;
using language::Role;

bool IsArgument(std::string_view text) { return language::HasPrefix(text, kArgumentPrefix); }

void CheckHiddenOperand(const ScriptItem& item, std::string_view text, const RuleContext& context) {
  if (!context.words.has_operand_names() || !LooksLikeOperand(text)) return;
  const auto word = context.words.Find(text);
  if (!word) return;
  context.report.Add(
      RuleId::kHiddenOperand, item,
      [&] {
        return fmt::format("{} is a defined word, too: its number {} is compiled", text, *word);
      },
      text);
}

// `count` is how many arguments are passed on.
void CheckRepeaterArgument(const ScriptItem& item, std::string_view text, std::uint32_t count,
                           const RuleContext& context) {
  if (!IsArgument(text) || context.words.Find(text)) return;
  const language::Number number = language::ReadNumber(text.substr(kArgumentPrefix.size()));
  if (number.raises || (number.is_number && number.value <= count)) return;
  context.report.Add(
      RuleId::kRepeaterArgument, item,
      [&] {
        return number.is_number ? fmt::format("{} names an argument that nobody hands over", text)
                                : fmt::format("{} names no argument and becomes 0xFFFFFFFF", text);
      },
      text);
}

}  // namespace

void CheckValueOperands(const ScriptItem& item, const RuleContext& context) {
  if (!context.words.has_operand_names()) return;
  ForEachField(item, [&](std::string_view part, Role role) {
    if (role == Role::kOperand || role == Role::kLocalValue)
      CheckHiddenOperand(item, part, context);
  });
}

void CheckRepeaterCount(const ScriptItem& item, const RuleContext& context) {
  const std::string_view count = item.first();
  // The library refuses an entry without an action.
  if (item.parts.size() < item.record->least || count.empty()) return;
  if (language::ReadNumber(count).is_number) return;
  context.report.Add(
      RuleId::kRepeaterCount, item,
      [&] {
        return fmt::format("{} is no plain number: nothing of this entry is compiled", count);
      },
      count);
}

void CheckRepeaterArguments(const ScriptItem& item, const RuleContext& context) {
  const auto is_argument = [](Role role) { return role == Role::kRepeatArgument; };
  // As in calls outside of actions, those that are passed on are counted from 1.
  std::uint32_t count = 0;
  ForEachField(item, [&](std::string_view part, Role role) {
    if (is_argument(role) && IsArgument(part)) ++count;
  });
  ForEachField(item, [&](std::string_view part, Role role) {
    if (!is_argument(role)) return;
    CheckHiddenOperand(item, part, context);
    CheckRepeaterArgument(item, part, count, context);
  });
}

}  // namespace rux::rules
