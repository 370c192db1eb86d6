// The list of all rules of style.
#ifndef LINT_LINT_LIST_H_
#define LINT_LINT_LIST_H_

#include <memory>

#include "lint/lint_rows.h"
#include "lint/lint_rule.h"
#include "ruxcomp/language/rows.h"

namespace rux::lint {

// limit_rules.cpp
std::unique_ptr<rules::Rule> MakeLimitRule(const LintContext& context);
std::unique_ptr<rules::Rule> MakeLimitsOfTypeRule(const LintContext& context);
// list_rules.cpp
std::unique_ptr<rules::Rule> MakeListOrderRule(const LintContext& context);
std::unique_ptr<rules::Rule> MakeSectionOrderRule(const LintContext& context);
std::unique_ptr<rules::Rule> MakeMixedIdBaseRule(const LintContext& context);
std::unique_ptr<rules::Rule> MakeMixedListBaseRule(const LintContext& context);
std::unique_ptr<rules::Rule> MakeLeadingZeroRule(const LintContext& context);
// value_rules.cpp
std::unique_ptr<rules::Rule> MakeSameReadingRule(const LintContext& context);
std::unique_ptr<rules::Rule> MakeComparisonRule(const LintContext& context);
std::unique_ptr<rules::Rule> MakeArithmeticRule(const LintContext& context);
std::unique_ptr<rules::Rule> MakeFlatTableRule(const LintContext& context);
// name_rules.cpp
std::unique_ptr<rules::Rule> MakeSimilarNameRule(const LintContext& context);
std::unique_ptr<rules::Rule> MakeNameOfTwoKindsRule(const LintContext& context);
std::unique_ptr<rules::Rule> MakeNamePatternRule(const LintContext& context);
std::unique_ptr<rules::Rule> MakeSensorSettingsRule(const LintContext& context);
// unused_rules.cpp
std::unique_ptr<rules::Rule> MakeUnusedRule(const LintContext& context);
// text_rules.cpp
std::unique_ptr<rules::Rule> MakeEmptySectionRule(const LintContext& context);
std::unique_ptr<rules::Rule> MakeRepeatedIncludeRule(const LintContext& context);
std::unique_ptr<rules::Rule> MakeLineRule(const LintContext& context);

// A rule and what it may report.
struct ListedRule {
  MakeLintRule make;
  language::Rows<RuleId> ids;
};

template <RuleId... ids>
inline constexpr RuleId kIds[] = {ids...};

template <MakeLintRule make, RuleId... ids>
inline constexpr ListedRule kListed{make, {kIds<ids...>, sizeof...(ids)}};

// In the order in which they report on one item, and at the end.
inline constexpr ListedRule kRules[] = {
    kListed<MakeLimitRule, RuleId::kLimitOrder, RuleId::kTheoryOutsideLimits>,
    kListed<MakeLimitsOfTypeRule, RuleId::kMissingLimits, RuleId::kOneSidedLimits>,
    kListed<MakeListOrderRule, RuleId::kListOrder>,
    kListed<MakeSectionOrderRule, RuleId::kSectionOrder>,
    kListed<MakeMixedIdBaseRule, RuleId::kMixedIdBase>,
    kListed<MakeMixedListBaseRule, RuleId::kMixedListBase>,
    kListed<MakeLeadingZeroRule, RuleId::kLeadingZero>,
    kListed<MakeSameReadingRule, RuleId::kSameReading>,
    kListed<MakeComparisonRule, RuleId::kConstantCondition, RuleId::kEqualResults>,
    kListed<MakeArithmeticRule, RuleId::kNeutralOperand, RuleId::kDivisionByZero,
            RuleId::kWideShift>,
    kListed<MakeFlatTableRule, RuleId::kFlatTable>,
    kListed<MakeSimilarNameRule, RuleId::kSimilarName>,
    kListed<MakeNameOfTwoKindsRule, RuleId::kNameOfTwoKinds>,
    kListed<MakeNamePatternRule, RuleId::kNamePattern>,
    kListed<MakeSensorSettingsRule, RuleId::kIdRange, RuleId::kMissingProperty>,
    kListed<MakeUnusedRule, RuleId::kUnusedWord, RuleId::kUnusedAction, RuleId::kUnusedTable,
            RuleId::kUnusedGlobal, RuleId::kUnusedGroup, RuleId::kUnusedInclude,
            RuleId::kUnusedArgument, RuleId::kUnusedStep, RuleId::kUnreachableStep>,
    kListed<MakeEmptySectionRule, RuleId::kEmptySection>,
    kListed<MakeRepeatedIncludeRule, RuleId::kRepeatedInclude>,
    kListed<MakeLineRule, RuleId::kTrailingBlank, RuleId::kMixedBlanks, RuleId::kLongLine,
            RuleId::kMissingLineEnd>,
};

}  // namespace rux::lint

#endif  // LINT_LINT_LIST_H_
