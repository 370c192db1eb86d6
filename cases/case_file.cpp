#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cases/case.h"
#include "evaluation/readings.h"
#include "evaluation/result.h"
#include "lists/csv.h"
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

// The file and line that a message about a test names.
template <class Read>
auto At(const std::string& path, std::uint32_t line, Read read) {
  try {
    return read();
  } catch (const support::Failure& failure) {
    throw support::Failure(support::ExitStatus::kTrouble, "{}:{}: {}", path, line, failure.what());
  }
}

ExpectedResult ExpectedOf(const std::string& text) {
  for (const Result::Kind kind : {Result::Kind::kUnknown, Result::Kind::kError}) {
    if (text == NameOf(kind)) return {kind, 0};
  }
  return {Result::Kind::kNumber, evaluation::Readings::NumberOf(text)};
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
    if (members[kReadings] != nullptr || members[kExpect] != nullptr)
      document_.Refuse(value.line, "a case with rounds has readings and expect in these");
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
        round.readings.emplace_back(member.key, SequenceOf(member.value));
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

  // A number, or one in a text: "0x5D".
  evaluation::Number NumberIn(const JsonValue& value) const {
    if (value.kind != Kind::kNumber) document_.Expect(value, Kind::kString, "a number");
    return At(document_.path(), value.line,
              [&] { return evaluation::Readings::NumberOf(value.text); });
  }

  evaluation::Sequence SequenceOf(const JsonValue& value) const {
    if (value.kind != Kind::kArray) return {NumberIn(value)};
    evaluation::Sequence sequence;
    for (const JsonValue& item : value.items) sequence.push_back(NumberIn(item));
    if (sequence.empty()) document_.Refuse(value.line, "a reading has a number");
    return sequence;
  }

  ExpectedResult ResultIn(const JsonValue& value) const {
    if (value.kind != Kind::kNumber) document_.Expect(value, Kind::kString, "a value");
    return At(document_.path(), value.line, [&] { return ExpectedOf(value.text); });
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
        expectation.band = part.value.text;
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

constexpr std::string_view kPathColumn = "path";

// What a column of a table of cases has, by the first word of its head.
class CaseTable {
 public:
  CaseTable(const std::string& path, const std::string& text)
      : path_(path), lines_(lists::ReadCsv(path, text, lists::SeparatorOf(text))) {}

  std::vector<Case> Cases() const {
    std::vector<Case> cases;
    if (lines_.empty()) return cases;
    const lists::FieldLine& head = lines_.front();
    if (head.fields.front() != "name") Refuse(head.number, "the first column is not \"name\"");
    for (auto line = std::next(lines_.begin()); line != lines_.end(); ++line) {
      if (line->fields.size() > head.fields.size())
        Refuse(line->number, "the line has more fields than the first one");
      cases.push_back({line->fields.front(), path_, line->number, false, {{line->number}}});
      std::string path;
      for (std::size_t i = 1; i < line->fields.size(); ++i) {
        if (head.fields[i] == kPathColumn) {
          path = line->fields[i];
        } else if (!line->fields[i].empty()) {
          Add(head.fields[i], path, line->fields[i], line->number, cases.back().rounds.front());
        }
      }
    }
    return cases;
  }

 private:
  [[noreturn]] void Refuse(std::uint32_t line, const std::string& text) const {
    throw support::Failure(support::ExitStatus::kTrouble, "{}:{}: {}", path_, line, text);
  }

  // `line_path`: what columns without a path are about.
  void Add(const std::string& head, const std::string& line_path, const std::string& field,
           std::uint32_t line, CaseRound& round) const {
    const std::size_t blank = std::min(head.find(' '), head.size());
    const std::string word = head.substr(0, blank);
    const std::string path = blank < head.size() ? head.substr(blank + 1) : line_path;
    const auto expected = [&]() -> Expectation& {
      const auto known = std::find_if(round.expected.begin(), round.expected.end(),
                                      [&](const Expectation& each) { return each.path == path; });
      return known != round.expected.end() ? *known
                                           : round.expected.emplace_back(Expectation{path, line});
    };
    At(path_, line, [&] {
      if (word == "reading") {
        round.readings.emplace_back(path,
                                    evaluation::Sequence{evaluation::Readings::NumberOf(field)});
      } else if (word == "value") {
        expected().value = ExpectedOf(field);
      } else if (word == "ipmi") {
        expected().ipmi = ExpectedOf(field);
      } else if (word == "band") {
        expected().band = field;
      } else {
        throw support::Failure(support::ExitStatus::kTrouble,
                               "no such column: {}; expected path, or reading, value, ipmi or "
                               "band, each with a path of its own or without",
                               support::NameText(support::Shortened(head)));
      }
    });
  }

  const std::string path_;
  const std::vector<lists::FieldLine> lines_;
};

// Reports are read by names.
void ExpectDistinctNames(const CaseFile& file) {
  std::set<std::string> names;
  for (const Case& each : file.cases) {
    if (names.insert(each.name).second) continue;
    throw support::Failure(support::ExitStatus::kTrouble, "{}:{}: a case before has the name {}",
                           each.file, each.line, support::NameText(each.name));
  }
}

std::string PathBeside(const std::string& file, const std::string& path) {
  return (std::filesystem::path(file).parent_path() / path).string();
}

}  // namespace

bool ExpectedResult::Fits(const Result& result) const {
  return result.kind() == kind && (kind != Result::Kind::kNumber || result.number() == number);
}

std::string ExpectedResult::Text() const {
  return kind == Result::Kind::kNumber ? evaluation::TextOf(number) : NameOf(kind);
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
        CaseTable(table, At(path, line, [&] { return read(table); })).Cases();
    file.cases.insert(file.cases.end(), more.begin(), more.end());
  }
  ExpectDistinctNames(file);
  return file;
}

CaseFile ReadCaseFile(const std::string& path) {
  const auto read = [](const std::string& name) {
    return settings::ReadTextFile(name, kLargestCaseFile);
  };
  return ParseCaseFile(path, read(path), read);
}

}  // namespace rux::cases
