// Runs test cases of a machine.
#ifndef CASES_RUN_H_
#define CASES_RUN_H_

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "cases/case.h"
#include "cases/coverage.h"
#include "evaluation/change.h"
#include "evaluation/plan.h"
#include "machine/machine.h"
#include "machine/place.h"
#include "profile/profile.h"

namespace rux::cases {

// What helps to see why something is not as expected.
struct Remark {
  std::string text;
  std::optional<machine::Place> place = {};  // where a script says it
};

// What a case expects of something, and what it is.
struct Difference {
  std::string path;  // empty: of all of the round
  std::string what;  // "value", "VALUE_IPMI", "band", "calls", "writes"
  std::string expected;
  std::string found;

  std::string Text() const;  // "SENSOR/CPU0_TEMP: expected band WH, found FH"
};

// Something that is not as expected. What it points to is part of the case.
struct Mismatch {
  std::uint32_t line;  // of the file of the case
  std::string text;
  std::optional<Difference> difference = {};  // none: the case cannot be evaluated
  std::vector<Remark> remarks = {};
  std::vector<const GivenReading*> readings = {};  // that the round used, up to kMostReadings
};
inline constexpr std::size_t kMostReadings = 8;

struct CaseResult {
  const Case* source;
  std::vector<Mismatch> mismatches;
  std::vector<const GivenReading*> unused;  // readings that no round of the case used

  bool passes() const { return mismatches.empty(); }
};

std::size_t CountFailed(const std::vector<CaseResult>& results);

// What a run of cases needs, which must outlive it.
struct Bench {
  const evaluation::Plan& plan;
  const profile::Profile& profile;
  std::mutex& places;  // of the machine, which are looked up by one thread at a time
};

// `change` is tried out; null: the machine stays as it is. Throws a Failure that names the line of
// what the case names and the machine does not have.
CaseResult RunCase(const Bench& bench, const Case& source, Coverage& coverage,
                   const evaluation::Change* change = nullptr);

// The results are in the order of the cases. `jobs`: how many threads share them, at most as many
// as there are cores. Throws what RunCase() throws of the first of several.
std::vector<CaseResult> RunCases(const Bench& bench, const std::vector<const Case*>& cases,
                                 std::size_t jobs, Coverage& coverage);

}  // namespace rux::cases

#endif  // CASES_RUN_H_
