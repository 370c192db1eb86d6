// What was probably meant by a name that does not exist.
#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "tool/diagnostics/advice.h"
#include "tool/diagnostics/script_names.h"
#include "tool/text/nearest.h"

namespace rux {
namespace {

using Names = std::vector<std::string>;

// The values that one key has in the sections of one kind.
template <const char* section, const char* key>
Names Values(const SourceView& sources, const Diagnostic&) {
  return ValuesOf(sources, section, key);
}

constexpr char kGroup[] = "GROUP";
constexpr char kPelmgroup[] = "PELMGROUP";
constexpr char kSensor[] = "SENSOR";
constexpr char kAction[] = "ACTION";
constexpr char kTable[] = "TABLE";
constexpr char kName[] = "NAME";
constexpr char kNumber[] = "ID";

Names Words(const SourceView& sources, const Diagnostic&) { return DefinedWords(sources); }
Names Globals(const SourceView& sources, const Diagnostic&) { return KeysOf(sources, "GLOBAL"); }
Names Sections(const SourceView&, const Diagnostic&) { return SectionKeywords(); }
Names OperatorTexts(const SourceView&, const Diagnostic&) { return Operators(); }
Names Keys(const SourceView&, const Diagnostic& diagnostic) {
  return KeywordsOf(*diagnostic.section);
}

struct Row {
  MessageId id;
  Names (*names)(const SourceView& sources, const Diagnostic& diagnostic);
  std::string_view prefix = {};  // of all these names: nothing that they are alike in
};

constexpr Row kRows[] = {
    {MessageId::kUnknownSection, Sections},
    {MessageId::kUnknownEntry, Keys},
    {MessageId::kInvalidEntryName, Keys},
    {MessageId::kUndefinedWord, Words},
    {MessageId::kUnknownValueType, Words},
    {MessageId::kUnknownOperator, OperatorTexts},
    {MessageId::kUnknownParentGroup, Values<kGroup, kName>},
    {MessageId::kUnknownParentPelmgroup, Values<kPelmgroup, kNumber>},
    {MessageId::kUnknownSensor, Values<kSensor, kNumber>},
    {MessageId::kUnknownAction, Values<kAction, kName>},
    {MessageId::kUnknownTable, Values<kTable, kName>},
    {MessageId::kUnknownGlobal, Globals, "G_"},
};

// What the diagnostic says does not exist; null when it is not said.
const std::string* Wanted(const Diagnostic& diagnostic) {
  const bool is_key =
      diagnostic.id == MessageId::kUnknownEntry || diagnostic.id == MessageId::kInvalidEntryName;
  if (is_key) return diagnostic.entry ? &*diagnostic.entry : nullptr;
  return FirstMentioned(diagnostic);
}

}  // namespace

void AddSuggestion(Locator& locator, Diagnostic& diagnostic) {
  const Row* row = std::find_if(std::begin(kRows), std::end(kRows),
                                [&](const Row& each) { return each.id == diagnostic.id; });
  const std::string* wanted = Wanted(diagnostic);
  // A text that is longer than any sensible name would take its time.
  constexpr std::size_t kLongest = 100;
  if (row == std::end(kRows) || wanted == nullptr || wanted->size() > kLongest) return;
  Names names = row->names(locator.sources(), diagnostic);
  const std::size_t skipped = row->prefix.size();
  for (std::string& name : names) name.erase(0, skipped);
  diagnostic.suggestion = MeantName(wanted->substr(skipped), names);
  if (diagnostic.suggestion) diagnostic.suggestion->insert(0, row->prefix);
}

}  // namespace rux
