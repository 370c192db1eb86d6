// What was probably meant by a name that does not exist.
#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/advice.h"
#include "sources/script_names.h"
#include "support/nearest.h"

namespace rux::diagnostics {
namespace {

using Names = std::vector<std::string>;

// The values that one key has in the sections of one kind.
template <const char* section, const char* key>
Names Values(const sources::SourceView& sources, const Diagnostic&) {
  return sources::ValuesOf(sources, section, key);
}

constexpr char kGroup[] = "GROUP";
constexpr char kPelmgroup[] = "PELMGROUP";
constexpr char kSensor[] = "SENSOR";
constexpr char kAction[] = "ACTION";
constexpr char kTable[] = "TABLE";
constexpr char kName[] = "NAME";
constexpr char kNumber[] = "ID";

Names Words(const sources::SourceView& sources, const Diagnostic&) {
  return sources::DefinedWords(sources);
}
Names Globals(const sources::SourceView& sources, const Diagnostic&) {
  return sources::KeysOf(sources, "GLOBAL");
}

constexpr std::string_view kValue = "VALUE_";

bool BeginsWith(std::string_view text, std::string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

// The values of an action's own; those of other sections are no operands.
Names LocalValues(const sources::SourceView&, const Diagnostic& diagnostic) {
  Names names;
  if (diagnostic.section != "ACTION" || diagnostic.at.source == nullptr) return names;
  const auto spot = diagnostic.at.source->At(diagnostic.at.first_line);
  if (!spot) return names;
  for (std::uint32_t i = 0; i < spot->section->item_count; ++i) {
    const std::string_view key = spot->section->items[i].key;
    if (BeginsWith(key, kValue) && key != diagnostic.entry) names.emplace_back(key);
  }
  return names;
}

// What a number may be given by: an operand that is none of the others is taken for a word.
Names WordsAndOperands(const sources::SourceView& sources, const Diagnostic& diagnostic) {
  Names names = sources::DefinedWords(sources);
  const bool is_operand = diagnostic.section == "GLOBAL" || diagnostic.section == "REPEATER" ||
                          (diagnostic.entry && BeginsWith(*diagnostic.entry, "VALUE"));
  if (!is_operand) return names;
  for (const Names& others : {Globals(sources, diagnostic), LocalValues(sources, diagnostic)}) {
    names.insert(names.end(), others.begin(), others.end());
  }
  return names;
}

Names Sections(const sources::SourceView&, const Diagnostic&) { return sources::SectionKeywords(); }
Names OperatorTexts(const sources::SourceView&, const Diagnostic&) { return sources::Operators(); }
Names Keys(const sources::SourceView&, const Diagnostic& diagnostic) {
  return sources::KeywordsOf(*diagnostic.section);
}

struct Row {
  MessageId id;
  Names (*names)(const sources::SourceView& sources, const Diagnostic& diagnostic);
  std::string_view prefix = {};  // of all these names: nothing that they are alike in
};

constexpr Row kRows[] = {
    {MessageId::kUnknownSection, Sections},
    {MessageId::kUnknownEntry, Keys},
    {MessageId::kInvalidEntryName, Keys},
    {MessageId::kUndefinedWord, WordsAndOperands},
    {MessageId::kUnknownValueType, Words},
    {MessageId::kUnknownOperator, OperatorTexts},
    {MessageId::kUnknownParentGroup, Values<kGroup, kName>},
    {MessageId::kUnknownParentPelmgroup, Values<kPelmgroup, kNumber>},
    {MessageId::kUnknownSensor, Values<kSensor, kNumber>},
    {MessageId::kUnknownAction, Values<kAction, kName>},
    {MessageId::kUnknownTable, Values<kTable, kName>},
    {MessageId::kUnknownGlobal, Globals, "G_"},
    {MessageId::kUnknownValue, LocalValues, kValue},
};

constexpr Row kExpectedWord = {{}, Words};

// Null when nothing is suggested for the diagnostic.
const Row* FindRow(const Diagnostic& diagnostic) {
  if (diagnostic.expects_word) return &kExpectedWord;
  const Row* row = std::find_if(std::begin(kRows), std::end(kRows),
                                [&](const Row& each) { return each.id == diagnostic.id; });
  return row == std::end(kRows) ? nullptr : row;
}

// What the diagnostic says does not exist; null when it is not said.
const std::string* Wanted(const Diagnostic& diagnostic) {
  const bool is_key =
      diagnostic.id == MessageId::kUnknownEntry || diagnostic.id == MessageId::kInvalidEntryName;
  if (is_key) return diagnostic.entry ? &*diagnostic.entry : nullptr;
  return FirstMentioned(diagnostic);
}

}  // namespace

std::size_t AddSuggestion(Locator& locator, Diagnostic& diagnostic) {
  const Row* row = FindRow(diagnostic);
  const std::string* wanted = Wanted(diagnostic);
  // A text that is longer than any sensible name would take its time.
  constexpr std::size_t kLongest = 100;
  if (row == nullptr || wanted == nullptr || wanted->size() > kLongest) return 0;
  Names names = row->names(locator.sources(), diagnostic);
  // It is there, though not where it is looked for.
  if (std::find(names.begin(), names.end(), *wanted) != names.end()) return names.size();
  const std::size_t skipped = row->prefix.size();
  for (std::string& name : names) name.erase(0, skipped);
  diagnostic.suggestion = support::MeantName(wanted->substr(skipped), names);
  if (diagnostic.suggestion) diagnostic.suggestion->insert(0, row->prefix);
  return names.size();
}

}  // namespace rux::diagnostics
