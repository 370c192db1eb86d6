// Whether test cases notice when a machine changes a little.
#ifndef CASES_MUTATION_H_
#define CASES_MUTATION_H_

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "cases/case.h"
#include "cases/run.h"
#include "evaluation/change.h"
#include "machine/place.h"
#include "profile/profile.h"
#include "support/text_stream.h"

namespace rux::cases {

struct Mutant {
  evaluation::Change change;
  std::string text;  // "SENSOR/CPU0_TEMP/THRESHOLD_FH: 101 for 100"
  std::optional<machine::Place> place;
  std::vector<const Case*> noticed_by = {};
};

// Each limit that the profile has compared and each first and last cell of equal ones, by one up
// and down; each operator as the next one. In the order of the machine.
std::vector<Mutant> MutantsOf(const Bench& bench);
// Limits that are never changed, because the profile leaves them out.
std::size_t CountLimitsLeftOut(const Bench& bench);

// Runs the cases that a change can concern with each of the changes. Takes time by the number of
// these. The cases pass without a change.
void FindNoticing(const Bench& bench, const std::vector<const Case*>& cases,
                  std::vector<Mutant>& mutants);

// Of a file of cases.
struct MutationResult {
  std::string file;
  std::string machine;
  profile::Profile profile;
  std::vector<Mutant> mutants;
  std::size_t left_out;  // limits that the profile does not have compared

  std::size_t noticed() const;
};

// Each change with the cases that notice it, and how many of the changes are noticed.
void WriteText(const MutationResult& result, bool only_unnoticed, support::TextStream& out);

// docs/test-mutation.schema.json
void WriteJson(const std::vector<MutationResult>& results, support::TextStream& out);

}  // namespace rux::cases

#endif  // CASES_MUTATION_H_
