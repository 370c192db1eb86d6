#include "advice/message_advice.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "rules/rule_report.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"

namespace rux::advice {
namespace {

using diagnostics::Diagnostic;
namespace language = ruxcomp::language;

constexpr char kFirstDefined[] = "first defined here";

bool NamesNumber(const Diagnostic& diagnostic) {
  const std::string* text = FirstMentioned(diagnostic);
  return text != nullptr && !text->empty() && text->front() >= '0' && text->front() <= '9';
}

bool NamesLongNumber(const Diagnostic& diagnostic) {
  const std::string* text = FirstMentioned(diagnostic);
  return NamesNumber(diagnostic) && text->size() > language::kLongestNumber &&
         text->find_first_not_of("0123456789abcdefxABCDEFX") == std::string::npos;
}

bool IsIn(const Diagnostic& diagnostic, language::SectionId kind) {
  return diagnostic.section == language::KindOf(kind).keyword;
}

bool IsOutsideAction(const Diagnostic& diagnostic) {
  return !IsIn(diagnostic, language::SECTION_ACTION);
}

bool IsSensorInRoot(const Diagnostic& diagnostic) {
  return IsIn(diagnostic, language::SECTION_SENSOR) &&
         *FirstMentioned(diagnostic) == language::kRootGroup;
}

bool IsCondition(const Diagnostic& diagnostic) { return IsIn(diagnostic, language::SECTION_IFDEF); }

// The columns of a row, one family each.
constexpr MessageAdvice Other(const ruxcomp::findings::MessageRow& row, const char* other,
                              Underline underline = Underline::kPlace) {
  return {&row, underline, other};
}
constexpr MessageAdvice OfItself(MessageAdvice advice, const char* text) {
  advice.of_itself = text;
  return advice;
}
constexpr MessageAdvice Suggest(const ruxcomp::findings::MessageRow& row,
                                decltype(MessageAdvice::names) names, std::string_view prefix = {},
                                Underline underline = Underline::kPlace) {
  return {&row, underline, nullptr, nullptr, names, prefix};
}
constexpr MessageAdvice Hint(MessageAdvice advice, decltype(MessageAdvice::needs_hint) needs_hint,
                             const char* hint) {
  advice.needs_hint = needs_hint;
  advice.hint = hint;
  return advice;
}

constexpr MessageAdvice Lacks(MessageAdvice advice, language::SectionId kind,
                              language::EntryId entry = {}) {
  advice.missing = {kind, entry};
  return advice;
}

namespace rows = ruxcomp::findings::rows;

constexpr MessageAdvice kFacts[] = {
    {&rows::kSurplusValues, Underline::kToLastPart},

    Other(rows::kRedefinedElsewhere, kFirstDefined),
    Other(rows::kRedefinedName, kFirstDefined),
    Other(rows::kRedefinedId, kFirstDefined),
    Other(rows::kRedefinedEntry, kFirstDefined),
    Other(rows::kRedefinedSection, kFirstDefined, Underline::kSectionName),
    OfItself(Other(rows::kParentDefinedLater,
                   "the parent begins here; its line number must be smaller, even in another file",
                   Underline::kHeader),
             "the group cannot be its own parent"),
    Other(rows::kArgumentCount, "defined here"),

    Suggest(rows::kUnknownSection, SectionKeywords, {}, Underline::kSectionName),
    Suggest(rows::kUnknownEntry, Keywords),
    Suggest(rows::kInvalidEntryName, Keywords),
    Lacks(Hint(Suggest(rows::kUndefinedWord, WordsAndOperands), NamesLongNumber,
               "a number has at most ten characters"),
          language::SECTION_DEFINE),
    Suggest(RowOf(rules::RuleId::kDefineUnknownWord), DefinedWords),
    Suggest(RowOf(rules::RuleId::kFalseIfdef), DefinedWords),
    Lacks(Hint(Suggest(rows::kUnknownValueType, DefinedWords), NamesNumber,
               "a value begins with a word that is defined as the number of its type, not with the "
               "number itself"),
          language::SECTION_DEFINE),
    Suggest(rows::kUnknownOperator, Operators),
    Lacks(Hint(Suggest(rows::kUnknownParentGroup, GroupNames), IsSensorInRoot,
               "only a group can have the root as its parent; a sensor needs a group"),
          language::SECTION_GROUP, language::ENTRY_NAME),
    Lacks({&rows::kUnknownParentPelmgroup}, language::SECTION_PELMGROUP, language::ENTRY_ID),
    Lacks({&rows::kUnlistedSensor}, language::SECTION_PELMGROUP, language::ENTRY_SENSORS),
    Lacks({&rows::kUnknownSensor}, language::SECTION_SENSOR, language::ENTRY_ID),
    Lacks(Suggest(rows::kUnknownAction, ActionNames), language::SECTION_ACTION,
          language::ENTRY_NAME),
    Lacks(Suggest(rows::kUnknownTable, TableNames), language::SECTION_TABLE, language::ENTRY_NAME),
    Lacks(Suggest(rows::kUnknownGlobal, Globals, language::kGlobalPrefix),
          language::SECTION_GLOBAL),
    Hint(Suggest(rows::kUnknownValue, LocalValues, language::kValuePrefix), IsOutsideAction,
         "only the values of an ACTION can be operands"),

    Hint({&rows::kMissingEntry}, IsCondition,
         "the first item of an IFDEF section is its condition, with the key DEFINEWORD"),
};

// What names of the script's own look like; their keyword goes into the braces.
const char* SentenceOf(language::NameForm form) {
  switch (form) {
    case language::NameForm::kAny:
      break;
    case language::NameForm::kNoDigitFirst:
      return "do not begin with a digit here";
    case language::NameForm::kNumber:
      return "are {} and a number here";
    case language::NameForm::kCells:
      return "are a cell here, or a range of cells, such as 0.255";
  }
  return "begin with {} here";
}

}  // namespace

const MessageAdvice& AdviceFor(const ruxcomp::findings::MessageRow* row) {
  static constexpr MessageAdvice kNoAdvice;
  const MessageAdvice* found =
      std::find_if(std::begin(kFacts), std::end(kFacts),
                   [&](const MessageAdvice& advice) { return advice.row == row; });
  return found == std::end(kFacts) ? kNoAdvice : *found;
}

std::string KeyRuleOf(std::string_view section) {
  const language::SectionKind* kind = language::FindKind(section);
  std::string keywords;
  language::NameForm form = language::NameForm::kAny;
  if (kind == nullptr) return keywords;
  for (const language::FreeEntryRule& rule : kind->free_entries) {
    if ((rule.notation & language::kFreeName) == 0) return {};
    // The last row takes what the others leave: its keyword is the usual one.
    const std::string_view others = keywords.empty() ? "" : " or ";
    keywords =
        fmt::format("{}{}{}", language::FindEntryRow(rule.identifier)->keyword, others, keywords);
    form = language::NameFormOf(rule.identifier);
  }
  if (kind->free_entries.empty()) return {};
  // Keywords do not begin with a digit, either.
  const bool is_of_all = kind->templates.empty() || form == language::NameForm::kNoDigitFirst;
  return (is_of_all ? "keys " : "other keys ") +
         fmt::format(fmt::runtime(SentenceOf(form)), keywords);
}

}  // namespace rux::advice
