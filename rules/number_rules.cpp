// Numbers that are not read as they look.
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

#include "rules/rule.h"
#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"

namespace rux::rules {
namespace {

using language::Number;
using language::Role;

// What may be wrong with a number; of several, the first one is reported.
struct Flaw {
  bool (*applies)(const Number& number);
  const char* text;  // a format of the text, its value, and what the number is
  RuleId rule;
  bool is_for_operands;
};

// What is missing without the number.
std::string DependentOf(const ScriptItem& item) {
  if (item.entry == language::ENTRY_DEFINED_WORD) {
    return fmt::format("whatever uses {}", item.name());
  }
  const bool is_part = language::PayloadOf(item.entry) == language::PAYLOAD_VALUE ||
                       language::PayloadOf(item.entry) == language::PAYLOAD_REPEATER ||
                       language::PayloadOf(item.entry) == language::PAYLOAD_STRINGLIST;
  return is_part ? "this part" : "the entry";
}

constexpr const char* kTrailingText = "{} is read as {}: what follows the number is ignored";

constexpr Flaw kFlaws[] = {
    {[](const Number& number) { return number.has_rest; }, kTrailingText, RuleId::kTrailingText,
     true},
    {[](const Number& number) { return number.is_cut; }, "{} has more than 32 bits: it becomes {}",
     RuleId::kNumberTooLarge, true},
    {[](const Number& number) { return number.value == language::kNoNumber; },
     "{2} is missing at run time: the number 0x{1:X} cannot be read back",
     RuleId::kUnfindableNumber, true},
    {[](const Number& number) { return number.is_negative; }, "{0} is stored as {1} (0x{1:X})",
     RuleId::kNegativeNumber, false},
};

// Whether the text is nothing but digits, so few that none of the flaws applies: almost all are.
bool IsPlainNumber(std::string_view text) {
  constexpr std::size_t kSurelyFits = 9;  // with the "0x" of seven hexadecimal digits
  if (text.size() > kSurelyFits) return false;
  const bool is_hexadecimal = language::IsHexadecimal(text);
  const unsigned int base = is_hexadecimal ? 16 : 10;
  text.remove_prefix(is_hexadecimal ? 2 : 0);
  return std::all_of(text.begin(), text.end(), [&](char c) {
    return language::kDigitValues[static_cast<unsigned char>(c)] < base;
  });
}

class NumberRule : public Rule {
 public:
  explicit NumberRule(const RuleContext& context) : context_(context) {}

  bool WantsItems(language::SectionId, std::uint32_t entry) const override {
    return entry != 0 && (language::PayloadOf(entry) != language::PAYLOAD_STRING ||
                          language::IsNumericString(entry));
  }

  void Check(const ScriptItem& item) override {
    switch (language::PayloadOf(item.entry)) {
      case language::PAYLOAD_STRINGLIST:
        for (const std::string_view part : item.parts) CheckNumber(item, part, false);
        return;
      case language::PAYLOAD_VALUE:
      case language::PAYLOAD_REPEATER:
        return ForEachField(
            item, [&](std::string_view part, Role role) { CheckField(item, part, role); });
      default:
        return CheckNumber(item, item.first(), true);
    }
  }

 private:
  void CheckField(const ScriptItem& item, std::string_view part, Role role) {
    switch (role) {
      case Role::kRepeatCount:
        return CheckNumber(item, part, true);
      case Role::kOperand:
      case Role::kNumber:
      case Role::kRepeatArgument:
        if (language::HasPrefix(part, language::kArgumentPrefix)) return CheckArgument(item, part);
        return CheckNumber(item, part, false);
      default:
        return;
    }
  }

  void CheckNumber(const ScriptItem& item, std::string_view text, bool is_entry) {
    if (IsPlainNumber(text)) return;
    const Number number = language::ReadNumber(text);
    if (!number.is_number) return;
    const auto* flaw = std::find_if(std::begin(kFlaws), std::end(kFlaws), [&](const Flaw& each) {
      return each.applies(number) && (is_entry || each.is_for_operands);
    });
    // A defined word that looks like a number is reported where it is defined.
    if (flaw == std::end(kFlaws) || context_.words.Find(text)) return;
    Warning warning = context_.report.Add(
        flaw->rule, item,
        [&] {
          return fmt::format(fmt::runtime(flaw->text), text, number.value, DependentOf(item));
        },
        text);
    if (flaw->rule == RuleId::kTrailingText) SuggestPrefix(text, warning);
  }

  void CheckArgument(const ScriptItem& item, std::string_view text) {
    const std::string_view prefix = language::kArgumentPrefix;
    const Number number = language::ReadNumber(text.substr(prefix.size()));
    if (!number.is_number || !number.has_rest) return;
    ReportTrailingText(item, text, fmt::format("{}{}", prefix, number.value), context_.report);
  }

  const RuleContext context_;
};

}  // namespace

void ReportTrailingText(const ScriptItem& item, std::string_view text, std::string_view read,
                        RuleReport& report) {
  Warning warning = report.Add(
      RuleId::kTrailingText, item, [&] { return fmt::format(kTrailingText, text, read); }, text);
  SuggestPrefix(text, warning);
}

void SuggestPrefix(std::string_view text, Warning& warning) {
  if (text.size() < 2 || (text.back() != 'h' && text.back() != 'H')) return;
  text.remove_suffix(1);
  const bool is_hexadecimal = std::all_of(text.begin(), text.end(), [](char c) {
    return language::kDigitValues[static_cast<unsigned char>(c)] < 16;
  });
  if (is_hexadecimal) warning.Suggest(fmt::format("0x{}", text));
}

std::unique_ptr<Rule> MakeNumberRule(const RuleContext& context) {
  return std::make_unique<NumberRule>(context);
}

}  // namespace rux::rules
