// The list of all rules about what is lost or hardly meant.
#ifndef RULES_RULE_LIST_H_
#define RULES_RULE_LIST_H_

#include <memory>
#include <string_view>

#include "rules/rule.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "ruxcomp/language/entries.h"

namespace rux::rules {

// A check of numbers that several rules share (number_rules.cpp). `read` is the number that the
// library reads the text as.
void ReportTrailingText(const ScriptItem& item, std::string_view text, std::string_view read,
                        RuleReport& report);
// Of FE20h, suggests 0xFE20.
void SuggestPrefix(std::string_view text, Warning& warning);

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
std::unique_ptr<Rule> MakeSwallowedSectionRule(const RuleContext& context);

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
    Each<TakesNumbers, CheckMisplacedBusType>,
    Each<With<language::PAYLOAD_VALUE>, CheckValueOperands>,
    MakeValueLoopRule,
    Each<kOfPlainNames, CheckQuotedKey>,
    Each<Of<language::ENTRY_PROPERTY>, CheckPropertyPrefix>,
    Each<Of<language::ENTRY_P, language::ENTRY_G>, CheckNamelessEntry>,
    MakeSharedNameRule,
    Each<Of<language::ENTRY_VALUE_OF_SENSOR, language::ENTRY_VALUE_OF_ACTION>, CheckBareValueName>,
    MakeMisspelledValueRule,
    MakeEmptyScriptRule,
    MakeMissingSectionRule,
    MakeSwallowedSectionRule,
};

}  // namespace rux::rules

#endif  // RULES_RULE_LIST_H_
