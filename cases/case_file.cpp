#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "cases/case.h"
#include "cases/case_table.h"
#include "cases/located.h"
#include "evaluation/bands.h"
#include "evaluation/readings.h"
#include "evaluation/result.h"
#include "lists/formats.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/limits.h"
#include "settings/document.h"
#include "settings/json_file.h"
#include "support/failure.h"
#include "support/safe_text.h"

namespace rux::cases {

using evaluation::Result;

namespace {

using settings::Document;
using settings::JsonMember;
using settings::JsonValue;
using settings::Key;
using Kind = settings::JsonValue::Kind;

constexpr std::size_t kLargestCaseFile = std::size_t{1} << 26;

enum FileMember : std::size_t { kFileSchema, kMachine, kCases, kTables };
constexpr Key kFileKeys[] = {{"$schema", Kind::kString},
                             {"machine", Kind::kString},
                             {"cases", Kind::kArray},
                             {"tables", Kind::kArray}};

enum CaseMember : std::size_t { kReadings, kExpect, kCalls, kWrites, kName, kStart, kRounds };
constexpr Key kCaseKeys[] = {{"readings", Kind::kObject}, {"expect", Kind::kObject},
                             {"calls", Kind::kArray},     {"writes", Kind::kArray},
                             {"name", Kind::kString},     {"start", Kind::kBoolean},
                             {"rounds", Kind::kArray}};

// The first four as those of a case.
enum RoundMember : std::size_t { kAfter = kWrites + 1 };
constexpr Key kRoundKeys[] = {{"readings", Kind::kObject},
                              {"expect", Kind::kObject},
                              {"calls", Kind::kArray},
                              {"writes", Kind::kArray},
                              {"after", Kind::kNumber}};

enum ExpectMember : std::size_t { kValue, kIpmi, kBand, kArguments };
constexpr std::string_view kExpectKeys[] = {"value", "ipmi", "band", "arguments"};

// In the order in which a message lists them.
std::vector<std::string> BandNames() {
  std::vector<std::string> names;
  for (const ruxcomp::language::EntryId id : ruxcomp::language::kLimitsUpwards) {
    if (const auto* limit = ruxcomp::language::FindLimit(id))
      names.push_back(evaluation::BandName(*limit));
  }
  names.insert(names.end(), {evaluation::kNormalBand, evaluation::kNoBand,
                             NameOf(Result::Kind::kUnknown), NameOf(Result::Kind::kError)});
  return names;
}

// Reads the cases of a file in JSON.
class CaseReader {
 public:
  explicit CaseReader(const Document& document) : document_(document) {}

  Case Read(const JsonValue& value) const {
    document_.Expect(value, Kind::kObject, "a case");
    const std::vector<const JsonValue*> members = document_.Members(value, kCaseKeys);
    if (members[kName] == nullptr || members[kName]->text.empty())
      document_.Refuse(value.line, "a case has a name");
    Case read{members[kName]->text, document_.path(), value.line};
    read.starts = members[kStart] != nullptr && members[kStart]->text == "true";
    if (members[kRounds] == nullptr) {
      read.rounds.push_back(RoundOf(value, members));
      return read;
    }
    for (const std::size_t member : {kReadings, kExpect, kCalls, kWrites}) {
      if (members[member] == nullptr) continue;
      document_.Refuse(members[member]->line,
                       fmt::format("a case with rounds has {} in these", kCaseKeys[member].name));
    }
    if (members[kRounds]->items.empty())
      document_.Refuse(members[kRounds]->line, "a case has at least one round");
    for (const JsonValue& round : members[kRounds]->items) {
      document_.Expect(round, Kind::kObject, "a round");
      read.rounds.push_back(RoundOf(round, document_.Members(round, kRoundKeys)));
      const JsonValue* after = document_.Members(round, kRoundKeys)[kAfter];
      if (after == nullptr) continue;
      constexpr std::uint32_t kLongest = 86400000;  // a day
      if (!after->number || *after->number == 0 || *after->number > kLongest) {
        document_.Refuse(after->line,
                         fmt::format("after must be a whole number from 1 to {}", kLongest));
      }
      read.rounds.back().after = static_cast<std::uint32_t>(*after->number);
    }
    return read;
  }

 private:
  CaseRound RoundOf(const JsonValue& value, const std::vector<const JsonValue*>& members) const {
    CaseRound round{value.line};
    if (members[kReadings] != nullptr) {
      for (const JsonMember& member : members[kReadings]->members)
        round.readings.push_back({member.key, member.line, ReadingIn(member.value)});
    }
    if (members[kExpect] != nullptr) {
      for (const JsonMember& member : members[kExpect]->members)
        round.expected.push_back(ExpectationOf(member));
    }
    if (members[kCalls] != nullptr) round.calls = TextsOf(*members[kCalls], "a call");
    if (members[kWrites] != nullptr) round.writes = TextsOf(*members[kWrites], "a write");
    return round;
  }

  std::vector<std::string> TextsOf(const JsonValue& array, std::string_view what) const {
    std::vector<std::string> texts;
    for (const auto& [text, line] : document_.StringsOf(&array, what)) texts.push_back(text);
    return texts;
  }

  // What is read of the text of a number or a text, which messages call `what`.
  template <class Read>
  auto OfText(const JsonValue& value, std::string_view what, Read read) const {
    if (value.kind != Kind::kNumber && value.kind != Kind::kString) {
      document_.Refuse(value.line, fmt::format("expected {}, found {}", what, NameOf(value.kind)));
    }
    return Located(document_.path(), value.line, [&] { return read(value.text); });
  }

  // A number, or one in a text: "0x5D".
  auto NumberIn(const JsonValue& value) const {
    return OfText(value, "a number, or a text with one", evaluation::Readings::NumberOf);
  }

  evaluation::Sequence SequenceOf(const JsonValue& value) const {
    if (value.kind != Kind::kArray) return {NumberIn(value)};
    evaluation::Sequence sequence;
    for (const JsonValue& item : value.items) sequence.push_back(NumberIn(item));
    if (sequence.empty()) document_.Refuse(value.line, "a list of numbers is not empty");
    return sequence;
  }

  evaluation::Sequence ReadingIn(const JsonValue& value) const {
    return value.kind == Kind::kNull ? evaluation::Sequence() : SequenceOf(value);
  }

  ExpectedResult ResultIn(const JsonValue& value) const {
    return OfText(value, "a number, \"unknown\" or \"error\"", ExpectedResult::Of);
  }

  Expectation ExpectationOf(const JsonMember& member) const {
    Expectation expectation{member.key, member.line};
    if (member.value.kind != Kind::kObject) {
      expectation.value = ResultIn(member.value);
      return expectation;
    }
    for (const JsonMember& part : member.value.members) {
      if (part.key == kExpectKeys[kValue]) {
        expectation.value = ResultIn(part.value);
      } else if (part.key == kExpectKeys[kIpmi]) {
        expectation.ipmi = ResultIn(part.value);
      } else if (part.key == kExpectKeys[kBand]) {
        document_.Expect(part.value, Kind::kString, "a band");
        expectation.band =
            Located(document_.path(), part.value.line, [&] { return BandOf(part.value.text); });
      } else if (part.key == kExpectKeys[kArguments]) {
        expectation.arguments = SequenceOf(part.value);
      } else {
        document_.Refuse(part.line,
                         "no such key: " + support::NameText(support::Shortened(part.key)));
      }
    }
    return expectation;
  }

  const Document& document_;
};

// A case that expects nothing would always pass.
void ExpectSomethingOf(const CaseFile& file) {
  for (const Case& each : file.cases) {
    const bool expects =
        std::any_of(each.rounds.begin(), each.rounds.end(),
                    [](const CaseRound& round) { return round.ExpectsSomething(); });
    if (!expects) RefuseAt(each.file, each.line, "the case expects nothing");
  }
}

// Reports are read by names.
void ExpectDistinctNames(const CaseFile& file) {
  std::set<std::string> names;
  for (const Case& each : file.cases) {
    if (!names.insert(each.name).second)
      RefuseAt(each.file, each.line, "a case before has the name " + support::NameText(each.name));
  }
}

std::string PathBeside(const std::string& file, const std::string& path) {
  return (std::filesystem::path(file).parent_path() / path).string();
}

}  // namespace

ExpectedResult ExpectedResult::Of(const std::string& text) {
  for (const Result::Kind known : {Result::Kind::kUnknown, Result::Kind::kError}) {
    if (text == NameOf(known)) return {known, 0};
  }
  return {Result::Kind::kNumber, evaluation::Readings::NumberOf(text)};
}

bool ExpectedResult::Fits(const Result& result) const {
  return result.kind() == kind && (kind != Result::Kind::kNumber || result.number() == number);
}

std::string ExpectedResult::Text() const {
  return kind == Result::Kind::kNumber ? evaluation::TextOf(number) : NameOf(kind);
}

std::string BandOf(const std::string& text) {
  const std::vector<std::string> names = BandNames();
  if (std::find(names.begin(), names.end(), text) != names.end()) return text;
  throw support::Failure(support::ExitStatus::kTrouble, "expected one of the bands {}, found {}",
                         fmt::format("{}", fmt::join(names, ", ")),
                         support::NameText(support::Shortened(text)));
}

bool CaseRound::ExpectsSomething() const {
  return calls || writes ||
         std::any_of(expected.begin(), expected.end(),
                     [](const Expectation& each) { return each.value || each.ipmi || each.band; });
}

CaseFile ParseCaseFile(const std::string& path, std::string_view text,
                       std::string (*read)(const std::string& path)) {
  const Document document(path, text);
  const std::vector<const JsonValue*> members = document.Members(document.root(), kFileKeys);
  if (members[kMachine] == nullptr || members[kMachine]->text.empty())
    document.Refuse(document.root().line, "a file of tests names a machine");
  CaseFile file{path, PathBeside(path, members[kMachine]->text), {}};
  if (members[kCases] != nullptr) {
    for (const JsonValue& item : members[kCases]->items)
      file.cases.push_back(CaseReader(document).Read(item));
  }
  for (const auto& [name, line] : document.StringsOf(members[kTables], "a table")) {
    const std::string table = PathBeside(path, name);
    const std::vector<Case> more =
        ParseCaseTable(table, Located(path, line, [&] { return read(table); }));
    file.cases.insert(file.cases.end(), more.begin(), more.end());
  }
  if (file.cases.empty()) document.Refuse(document.root().line, "the file has no cases");
  ExpectSomethingOf(file);
  ExpectDistinctNames(file);
  return file;
}

CaseFile ReadCaseFile(const std::string& path) {
  return ParseCaseFile(path, settings::ReadTextFile(path, kLargestCaseFile), lists::ReadListFile);
}

}  // namespace rux::cases
