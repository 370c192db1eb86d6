// What the texts of some messages leave open.
#include <string>

#include "tool/diagnostics/advice.h"

namespace rux {
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
};

}  // namespace

void AddHint(Diagnostic& diagnostic) {
  for (const Row& row : kRows) {
    if (row.id == diagnostic.id && row.helps(diagnostic)) {
      diagnostic.notes.push_back({row.text, {}});
    }
  }
}

}  // namespace rux
