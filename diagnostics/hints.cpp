// What the texts of some messages leave open.
#include <string>
#include <string_view>

#include "diagnostics/advice.h"

namespace rux::diagnostics {
namespace {

bool Always(const Diagnostic&) { return true; }

bool NamesNumber(const Diagnostic& diagnostic) {
  const std::string* text = FirstMentioned(diagnostic);
  return text != nullptr && !text->empty() && text->front() >= '0' && text->front() <= '9';
}

bool NamesLongNumber(const Diagnostic& diagnostic) {
  constexpr std::size_t kLongest = 10;
  return NamesNumber(diagnostic) && FirstMentioned(diagnostic)->size() > kLongest;
}

bool IsOutsideAction(const Diagnostic& diagnostic) { return diagnostic.section != "ACTION"; }

bool IsSensorInRoot(const Diagnostic& diagnostic) {
  return diagnostic.section == "SENSOR" && *FirstMentioned(diagnostic) == "0";
}

bool IsCondition(const Diagnostic& diagnostic) { return diagnostic.section == "IFDEF"; }

struct Row {
  MessageId id;
  bool (*helps)(const Diagnostic& diagnostic);
  const char* text;
};

constexpr Row kRows[] = {
    {MessageId::kUndefinedWord, NamesLongNumber, "a number has ten characters at most"},
    {MessageId::kUnknownValueType, NamesNumber,
     "a value begins with a word that a DEFINE section gives the number of its type; the number "
     "itself is not taken"},
    {MessageId::kSmbusAddress, Always, "nothing but the four characters 0x00 is taken here"},
    {MessageId::kSmbusBusType, Always,
     "nothing but the word BUSTYPE_SMBUS is taken here, not its number either"},
    {MessageId::kUnknownValue, IsOutsideAction,
     "only the values of an ACTION can be named as operands"},
    {MessageId::kUnknownParentGroup, IsSensorInRoot,
     "only groups hang in the root; a sensor needs a group"},
    {MessageId::kMissingEntry, IsCondition,
     "the condition of an IFDEF section is its first item, and must be called DEFINEWORD"},
};

// What a key must be like that is none of the language's.
struct KeyRule {
  std::string_view section;
  const char* text;
};

constexpr KeyRule kKeyRules[] = {
    {"SYSTEM", "other keys begin with P_ here"},
    {"PELMGROUP", "other keys begin with P_ here"},
    {"SENSOR", "other keys begin with VALUE_ or P_ here"},
    {"DEVICE", "other keys begin with VALUE_ or P_ here"},
    {"ACTION", "other keys are VALUE_ and a number here"},
    {"TABLE", "other keys are a cell here, or the first and the last one, such as 0.255"},
    {"GLOBAL", "keys begin with G_ here"},
    {"PROPERTY", "keys do not begin with a digit here"},
    {"REPEATER", "keys do not begin with a digit here"},
    {"DEFINE", "keys do not begin with a digit here"},
    {"IFDEF", "keys do not begin with a digit here"},
};

}  // namespace

void AddHint(Diagnostic& diagnostic) {
  if (diagnostic.id == MessageId::kInvalidEntryName && !diagnostic.suggestion) {
    for (const KeyRule& rule : kKeyRules) {
      if (diagnostic.section == rule.section) diagnostic.notes.push_back({rule.text, {}});
    }
  }
  for (const Row& row : kRows) {
    if (row.id == diagnostic.id && row.helps(diagnostic)) {
      diagnostic.notes.push_back({row.text, {}});
    }
  }
}

}  // namespace rux::diagnostics
