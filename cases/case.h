// Test cases of a machine: readings, and what is expected of them.
//
//   docs/test.schema.json
#ifndef CASES_CASE_H_
#define CASES_CASE_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "evaluation/readings.h"
#include "evaluation/result.h"

namespace rux::cases {

// A number, "unknown" or "error"; the reason is not compared.
struct ExpectedResult {
  evaluation::Result::Kind kind;
  evaluation::Number number;  // of a number

  // Throws a Failure unless the text is one of these.
  static ExpectedResult Of(const std::string& text);

  bool Fits(const evaluation::Result& result) const;
  std::string Text() const;  // "93", "unknown"
};

// The text, which is what evaluation::Band::Name() can be. Throws a Failure for any other.
std::string BandOf(const std::string& text);

// What is expected of one target; of what is not stated, anything.
struct Expectation {
  std::string path;
  std::uint32_t line;
  std::optional<ExpectedResult> value = {};
  std::optional<ExpectedResult> ipmi = {};
  std::optional<std::string> band = {};
  evaluation::Sequence arguments = {};  // of an action
};

struct GivenReading {
  std::string key;
  std::uint32_t line;
  evaluation::Sequence sequence;  // empty: what a round before gave is taken back
};

struct CaseRound {
  std::uint32_t line = 0;
  // In milliseconds since the round before, by the profile; none: the next one.
  std::optional<std::uint32_t> after = {};
  std::vector<GivenReading> readings = {};
  std::vector<Expectation> expected = {};
  // In order, as rux eval prints them.
  std::optional<std::vector<std::string>> calls = {};
  std::optional<std::vector<std::string>> writes = {};

  bool ExpectsSomething() const;
};

struct Case {
  std::string name;
  std::string file;
  std::uint32_t line = 0;
  bool starts = false;  // VALUE_INIT comes before the first round, if the profile has it so
  std::vector<CaseRound> rounds = {};
};

struct CaseFile {
  std::string path;
  std::string machine;      // its file
  std::vector<Case> cases;  // one at least
};

// With the cases of its tables. Throws a Failure that names the file and the line.
CaseFile ReadCaseFile(const std::string& path);

// Of the text of a file; `read` returns that of one of its tables.
CaseFile ParseCaseFile(const std::string& path, std::string_view text,
                       std::string (*read)(const std::string& path));

}  // namespace rux::cases

#endif  // CASES_CASE_H_
