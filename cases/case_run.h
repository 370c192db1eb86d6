// One case from its first round to its last.
#ifndef CASES_CASE_RUN_H_
#define CASES_CASE_RUN_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "cases/binding.h"
#include "cases/case.h"
#include "cases/coverage.h"
#include "cases/run.h"
#include "cases/watch.h"
#include "evaluation/change.h"
#include "evaluation/evaluator.h"
#include "evaluation/readings.h"
#include "evaluation/round.h"
#include "evaluation/target.h"
#include "evaluation/trace.h"
#include "machine/machine.h"
#include "machine/place.h"
#include "ruxcomp/model/handles.h"

namespace rux::cases {

class CaseRun {
 public:
  // All of them must outlive this.
  CaseRun(const Bench& bench, const Case& source, Coverage& coverage,
          const evaluation::Change* change);

  CaseResult Run();

 private:
  using Target = evaluation::Target;
  using Outcome = evaluation::Outcome;
  using Texts = std::vector<std::string>;

  const machine::Machine& machine() const { return bench_.plan.machine(); }

  void RunRound(const BoundRound& bound);
  // How many rounds of the machine fit until then; none when that is not known.
  std::optional<std::uint32_t> TimesOf(const CaseRound& round);

  void Compare(const Expectation& expected, const Target& target, const Outcome& outcome);
  void CompareEffects(const CaseRound& round);
  void CompareLists(const CaseRound& round, const char* what, const std::optional<Texts>& expected,
                    const Texts& found, const std::vector<Origin>& origins);

  void Add(std::uint32_t line, Difference difference, std::vector<Remark> remarks);
  // Of the round, in the order in which they were given; one more than are shown, if there are
  // more.
  std::vector<const GivenReading*> UsedReadings() const;

  std::optional<machine::Place> PlaceOf(const ruxcomp::Section& section,
                                        const ruxcomp::Entry& entry) const;
  // The value of the sensor with that fixed name, or that of another target.
  Remark ValueRemark(const Target& target, const char* name, const std::string& text) const;
  // The value, and the limits of these bands.
  std::vector<Remark> LimitRemarks(const Target& target, const Outcome& outcome,
                                   const Texts& bands) const;

  const Bench& bench_;
  const Case& source_;
  Coverage& coverage_;
  // With a number that grows from one that is given to the next.
  struct Given {
    std::size_t number;
    const GivenReading* reading;
  };
  std::map<evaluation::ReadingKey, Given> given_;
  std::size_t given_count_ = 0;
  std::optional<std::vector<const GivenReading*>> used_;  // of this round, once they are asked for
  evaluation::Readings readings_;
  evaluation::Effects effects_;
  Watch watch_;
  evaluation::Evaluator evaluator_;
  evaluation::Rounds rounds_;
  std::vector<Mismatch> mismatches_;
};

}  // namespace rux::cases

#endif  // CASES_CASE_RUN_H_
