// Entries that are not compiled as they look.
#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "findings/message_rows.h"
#include "rules/defined_words.h"
#include "rules/rule.h"
#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "rules/wording.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"
#include "support/number_text.h"
#include "support/safe_text.h"

namespace rux::rules {

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
      [&] { return fmt::format("the type {} does not fit into 24 bits", item.type); },
      item.first());
}

void CheckTooManyOperands(const ScriptItem& item, const RuleContext& context) {
  if (item.record == nullptr || item.parts.size() < 2) return;
  // With an unknown operator, nobody knows how many operands are meant.
  const bool is_calculation = item.record->shape == language::Shape::kCalculation;
  if (is_calculation && language::FindOperator(item.parts[1]) == nullptr) return;
  const language::ValueType& type = language::TypeFor(item.type, item.parts[1]);
  if (item.parts.size() <= type.MostKept() || type.shape == language::Shape::kNone) return;
  const std::string_view first = item.parts[type.most];
  const std::string_view last = item.parts.back();
  const auto size = static_cast<std::size_t>(last.data() - first.data()) + last.size();
  context.report.Add(ruxcomp::findings::rows::kTooManyOperands, item,
                     [&] {
                       return Worded(ruxcomp::findings::rows::kTooManyOperands,
                                     {{"0", support::Shortened(item.first())},
                                      {"takes", PartsText(type)},
                                      {"found", std::to_string(item.parts.size())}});
                     },
                     {first.data(), size});
}

namespace {

// Most likely one choice of a vocabulary that all these values share: reported once for each type.
class DroppedOperandsRule : public Rule {
 public:
  explicit DroppedOperandsRule(const RuleContext& context) : context_(context) {}

  bool WantsItems(language::SectionId, std::uint32_t entry) const override {
    return language::PayloadOf(entry) == language::PAYLOAD_VALUE;
  }

  void Check(const ScriptItem& item) override {
    const bool has_no_record =
        item.record != nullptr && item.record->shape == language::Shape::kNone;
    if (!has_no_record || item.parts.size() < 2) return;
    const auto [place, is_new] = places_.emplace(item.type, first_.size());
    if (is_new) first_.push_back({item, item.type, item.parts[1], 0});
    ++first_[place->second].values;
  }

  void EndScript(const Script&) override {
    for (const First& first : first_) {
      context_.report.Add(
          RuleId::kDroppedOperands, first.item, [&] { return TextOf(first); }, first.operand);
    }
  }

 private:
  // The first value of a type, and how many there are.
  struct First {
    ItemRef item;
    std::uint32_t type;
    std::string_view operand;
    std::size_t values;
  };

  static std::string TextOf(const First& first) {
    std::string text = fmt::format(
        "values of type {} have no operands: everything after the type is dropped", first.type);
    const std::size_t others = first.values - 1;
    if (others > 0) text += ", here and in " + support::CountText(others, "other value");
    return text;
  }

  const RuleContext context_;
  std::vector<First> first_;
  std::map<std::uint32_t, std::size_t> places_;  // in first_, by type
};

}  // namespace

std::unique_ptr<Rule> MakeDroppedOperandsRule(const RuleContext& context) {
  return std::make_unique<DroppedOperandsRule>(context);
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
        return fmt::format("{} is also a defined word: its number {} is compiled", text, *word);
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
        return number.is_number ? fmt::format("{} names an argument that no caller passes", text)
                                : fmt::format("{} is not an argument and becomes 0xFFFFFFFF", text);
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
      [&] { return fmt::format("{} is not a plain number: this entry is dropped", count); }, count);
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
