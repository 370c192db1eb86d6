// What a rule is, and the list of all rules.
#ifndef RULES_RULE_LIST_H_
#define RULES_RULE_LIST_H_

#include <cstdint>
#include <memory>
#include <string_view>

#include "rules/defined_words.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"

namespace rux::rules {

struct RuleContext {
  const DefinedWords& words;
  RuleReport& report;
};

// A rule gets the items that it wants, once, in the order in which the library reads them. There
// may be millions: what is done for each must be cheap. Items that the library rejects are among
// them.
class Rule {
 public:
  virtual ~Rule() = default;

  // Whether the rule is about items with such an entry; asked once for each kind and entry. An
  // entry of 0 stands for the keys that the kind does not take.
  virtual bool WantsItems(language::SectionId, std::uint32_t) const { return false; }
  // Whether BeginSection and EndSection are called for sections of the kind.
  virtual bool WantsSections(language::SectionId) const { return false; }

  virtual void BeginSection(const ScriptSection&, language::SectionId) {}
  virtual void Check(const ScriptItem&) {}
  virtual void EndSection() {}
  virtual void EndScript(const Script&) {}
};

using MakeRule = std::unique_ptr<Rule> (*)(const RuleContext& context);

// A rule that needs no more than the item.
using WantsItems = bool (*)(language::SectionId kind, std::uint32_t entry);
using CheckItem = void (*)(const ScriptItem& item, const RuleContext& context);

template <WantsItems wants, CheckItem check>
class ItemRule : public Rule {
 public:
  explicit ItemRule(const RuleContext& context) : context_(context) {}

  bool WantsItems(language::SectionId kind, std::uint32_t entry) const override {
    return wants(kind, entry);
  }
  void Check(const ScriptItem& item) override { check(item, context_); }

 private:
  const RuleContext context_;
};

// A check of numbers that several rules share (number_rules.cpp). `read` is the number that the
// library reads the text as.
void ReportTrailingText(const ScriptItem& item, std::string_view text, std::string_view read,
                        RuleReport& report);
// Of FE20h, suggests 0xFE20.
void SuggestPrefix(std::string_view text, Warning& warning);

// What items an item rule is about.
inline bool Any(language::SectionId, std::uint32_t) { return true; }
template <std::uint32_t... entries>
bool Of(language::SectionId, std::uint32_t entry) {
  return ((entry == entries) || ...);
}
template <language::SectionId... kinds>
bool In(language::SectionId kind, std::uint32_t) {
  return ((kind == kinds) || ...);
}
template <std::uint32_t payload>
bool With(language::SectionId, std::uint32_t entry) {
  return language::PayloadOf(entry) == payload;
}

template <WantsItems wants, CheckItem check>
std::unique_ptr<Rule> Each(const RuleContext& context) {
  return std::make_unique<ItemRule<wants, check>>(context);
}

// number_rules.cpp
std::unique_ptr<Rule> MakeNumberRule(const RuleContext& context);
// line_rules.cpp
void CheckTextBesideQuotes(const ScriptItem& item, const RuleContext& context);
std::unique_ptr<Rule> MakeLineRule(const RuleContext& context);
// character_rules.cpp
void CheckTypographicQuotes(const ScriptItem& item, const RuleContext& context);
std::unique_ptr<Rule> MakeHiddenCharacterRule(const RuleContext& context);
// table_rules.cpp
std::unique_ptr<Rule> MakeTableRule(const RuleContext& context);
// group_rules.cpp
void CheckRootGroup(const ScriptItem& item, const RuleContext& context);
std::unique_ptr<Rule> MakeChildgroupRule(const RuleContext& context);
// pelmgroup_rules.cpp
std::unique_ptr<Rule> MakePelmgroupPropertyRule(const RuleContext& context);
std::unique_ptr<Rule> MakePelmgroupTreeRule(const RuleContext& context);
// sensor_list_rules.cpp
void CheckEmptySensors(const ScriptItem& item, const RuleContext& context);
std::unique_ptr<Rule> MakeSensorListRule(const RuleContext& context);
// id_rules.cpp
std::unique_ptr<Rule> MakeIdRule(const RuleContext& context);
// value_rules.cpp
void CheckArgnumberWord(const ScriptItem& item, const RuleContext& context);
void CheckTypeTooLarge(const ScriptItem& item, const RuleContext& context);
void CheckTooManyOperands(const ScriptItem& item, const RuleContext& context);
std::unique_ptr<Rule> MakeDroppedOperandsRule(const RuleContext& context);
// bus_rules.cpp
void CheckSmbus(const ScriptItem& item, const RuleContext& context);
void CheckMisplacedBusType(const ScriptItem& item, const RuleContext& context);
// value_loop_rules.cpp
std::unique_ptr<Rule> MakeValueLoopRule(const RuleContext& context);
void CheckRepeaterCount(const ScriptItem& item, const RuleContext& context);
void CheckValueOperands(const ScriptItem& item, const RuleContext& context);
void CheckRepeaterArguments(const ScriptItem& item, const RuleContext& context);
// name_rules.cpp
void CheckQuotedKey(const ScriptItem& item, const RuleContext& context);
void CheckPropertyPrefix(const ScriptItem& item, const RuleContext& context);
void CheckNamelessEntry(const ScriptItem& item, const RuleContext& context);
std::unique_ptr<Rule> MakeSharedNameRule(const RuleContext& context);
void CheckBareValueName(const ScriptItem& item, const RuleContext& context);
std::unique_ptr<Rule> MakeMisspelledValueRule(const RuleContext& context);
// script_rules.cpp
std::unique_ptr<Rule> MakeEmptyScriptRule(const RuleContext& context);
std::unique_ptr<Rule> MakeMissingSectionRule(const RuleContext& context);

// In the order in which they report on one item, and at the end. What is wrong with the definitions
// of words is reported before all of them (defined_words.h).
inline constexpr MakeRule kRules[] = {
    MakeNumberRule,
    Each<Any, CheckTextBesideQuotes>,
    MakeLineRule,
    MakeHiddenCharacterRule,
    Each<Any, CheckTypographicQuotes>,
    MakeTableRule,
    Each<In<language::SECTION_GROUP>, CheckRootGroup>,
    MakeChildgroupRule,
    Each<Of<language::ENTRY_SENSORS>, CheckEmptySensors>,
    MakePelmgroupPropertyRule,
    MakePelmgroupTreeRule,
    MakeSensorListRule,
    MakeIdRule,
    Each<Of<language::ENTRY_ARGNUMBER>, CheckArgnumberWord>,
    Each<Of<language::ENTRY_REPEATER>, CheckRepeaterCount>,
    Each<Of<language::ENTRY_REPEATER>, CheckRepeaterArguments>,
    Each<With<language::PAYLOAD_VALUE>, CheckTypeTooLarge>,
    Each<With<language::PAYLOAD_VALUE>, CheckTooManyOperands>,
    MakeDroppedOperandsRule,
    Each<With<language::PAYLOAD_VALUE>, CheckSmbus>,
    Each<With<language::PAYLOAD_VALUE>, CheckMisplacedBusType>,
    Each<With<language::PAYLOAD_VALUE>, CheckValueOperands>,
    MakeValueLoopRule,
    Each<In<language::SECTION_PROPERTY, language::SECTION_REPEATER, language::SECTION_DEFINE,
            language::SECTION_IFDEF>,
         CheckQuotedKey>,
    Each<Of<language::ENTRY_PROPERTY>, CheckPropertyPrefix>,
    Each<Of<language::ENTRY_P, language::ENTRY_G>, CheckNamelessEntry>,
    MakeSharedNameRule,
    Each<Of<language::ENTRY_VALUE_OF_SENSOR, language::ENTRY_VALUE_OF_ACTION>, CheckBareValueName>,
    MakeMisspelledValueRule,
    MakeEmptyScriptRule,
    MakeMissingSectionRule,
};

}  // namespace rux::rules

#endif  // RULES_RULE_LIST_H_
