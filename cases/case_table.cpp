#include "cases/case_table.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cases/case.h"
#include "cases/located.h"
#include "evaluation/readings.h"
#include "lists/csv.h"
#include "support/safe_text.h"

namespace rux::cases {
namespace {

// What a column has.
enum class Part { kNothing, kPath, kReading, kValue, kIpmi, kBand };
struct PartWord {
  std::string_view word;
  Part part;
};
constexpr PartWord kPartWords[] = {{"", Part::kNothing},        {"path", Part::kPath},
                                   {"reading", Part::kReading}, {"value", Part::kValue},
                                   {"ipmi", Part::kIpmi},       {"band", Part::kBand}};

struct Column {
  Part part = Part::kNothing;
  std::string word;  // "reading"
  std::string path;  // empty: that of the line
};

class CaseTable {
 public:
  CaseTable(const std::string& path, std::string_view text)
      : path_(path), lines_(lists::ReadCsv(path, text, lists::SeparatorOf(text))) {}

  std::vector<Case> Cases() {
    if (lines_.size() < 2) RefuseAt(path_, 1, "the table has no cases");
    ReadHead(lines_.front());
    std::vector<Case> cases;
    for (auto line = std::next(lines_.begin()); line != lines_.end(); ++line)
      cases.push_back(CaseOf(*line));
    return cases;
  }

 private:
  void ReadHead(const lists::FieldLine& head) {
    if (head.fields.front() != "name")
      RefuseAt(path_, head.number, "the first column is not \"name\"");
    bool has_path = false;
    for (const std::string& field : head.fields) {
      columns_.push_back(columns_.empty() ? Column{} : ColumnOf(field, head.number));
      const Column& column = columns_.back();
      has_path = has_path || column.part == Part::kPath;
      if (column.part == Part::kNothing || has_path || !column.path.empty()) continue;
      RefuseAt(path_, head.number,
               fmt::format("the column {} has no path of its own, and follows no column path",
                           column.word));
    }
  }

  Column ColumnOf(const std::string& head, std::uint32_t line) const {
    const std::size_t blank = std::min(head.find(' '), head.size());
    Column column{Part::kNothing, head.substr(0, blank), {}};
    if (blank < head.size()) column.path = head.substr(blank + 1);
    const auto* const known =
        std::find_if(std::begin(kPartWords), std::end(kPartWords),
                     [&](const PartWord& each) { return each.word == column.word; });
    const bool is_known = known != std::end(kPartWords);
    if (is_known) column.part = known->part;
    const bool takes_path = column.part != Part::kNothing && column.part != Part::kPath;
    if (!is_known || (!takes_path && !column.path.empty())) {
      RefuseAt(path_, line,
               "no such column: " + support::NameText(support::Shortened(head)) +
                   "; expected path, or reading, value, ipmi or band, each with a path of its own "
                   "or without");
    }
    return column;
  }

  Case CaseOf(const lists::FieldLine& line) const {
    if (line.fields.size() > columns_.size())
      RefuseAt(path_, line.number, "the line has more fields than the first one");
    if (line.fields.front().empty()) RefuseAt(path_, line.number, "a case has a name");
    Case read{line.fields.front(), path_, line.number, false, {{line.number}}};
    std::string path;
    for (std::size_t i = 1; i < line.fields.size(); ++i) {
      if (columns_[i].part == Part::kPath) {
        path = line.fields[i];
      } else if (!line.fields[i].empty()) {
        Column column = columns_[i];
        if (column.path.empty()) column.path = path;
        Add(column, line.fields[i], line.number, read.rounds.front());
      }
    }
    return read;
  }

  // A field that is not empty, with the path that it is about.
  void Add(const Column& column, const std::string& field, std::uint32_t line,
           CaseRound& round) const {
    if (column.part == Part::kNothing) RefuseAt(path_, line, "the field is in no column");
    if (column.path.empty())
      RefuseAt(path_, line, fmt::format("the line has no path for its {}", column.word));
    if (column.part == Part::kReading) {
      const auto number =
          Located(path_, line, [&] { return evaluation::Readings::NumberOf(field); });
      round.readings.push_back({column.path, line, {number}});
      return;
    }
    Expectation& expected = ExpectationOf(column.path, line, round);
    if (column.part == Part::kBand) {
      const std::string band = Located(path_, line, [&] { return BandOf(field); });
      State(expected.band, band, column, line);
    } else {
      State(column.part == Part::kIpmi ? expected.ipmi : expected.value,
            Located(path_, line, [&] { return ExpectedResult::Of(field); }), column, line);
    }
  }

  static Expectation& ExpectationOf(const std::string& path, std::uint32_t line, CaseRound& round) {
    const auto known = std::find_if(round.expected.begin(), round.expected.end(),
                                    [&](const Expectation& each) { return each.path == path; });
    return known != round.expected.end() ? *known
                                         : round.expected.emplace_back(Expectation{path, line});
  }

  template <class Value>
  void State(std::optional<Value>& stated, const Value& value, const Column& column,
             std::uint32_t line) const {
    if (stated)
      RefuseAt(path_, line, fmt::format("the {} of {} is given twice", column.word, column.path));
    stated = value;
  }

  const std::string path_;
  const std::vector<lists::FieldLine> lines_;
  std::vector<Column> columns_;
};

}  // namespace

std::vector<Case> ParseCaseTable(const std::string& path, std::string_view text) {
  return CaseTable(path, text).Cases();
}

}  // namespace rux::cases
