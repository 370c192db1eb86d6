#include "page/test_run.h"

#include <algorithm>
#include <cstddef>
#include <mutex>
#include <utility>
#include <vector>

#include "cases/case.h"
#include "cases/coverage.h"
#include "cases/run.h"
#include "evaluation/plan.h"
#include "evaluation/target.h"
#include "machine/machine.h"
#include "profile/profile.h"

namespace rux::page {
namespace {

constexpr Tally::Things Tally::*kThings[] = {&Tally::missing, &Tally::left_out};

}  // namespace

TestRun::TestRun(const machine::Machine& machine, profile::Profile profile,
                 std::vector<cases::CaseFile> files)
    : profile_(std::move(profile)) {
  const evaluation::Plan plan(machine);
  std::mutex places;
  cases::Coverage covered;
  for (cases::CaseFile& file : files) {
    TestedFile& tested = files_.emplace_back(TestedFile{std::move(file), {}});
    std::vector<const cases::Case*> all;
    all.reserve(tested.file.cases.size());
    for (const cases::Case& each : tested.file.cases) all.push_back(&each);
    tested.results = cases::RunCases({plan, profile_, places}, all, 1, covered);
  }
  coverage_ = cases::CoverageOf(machine, profile_, covered);
  for (std::size_t kind = 0; kind < coverage_.size(); ++kind) {
    for (const evaluation::ValueKey& key : coverage_[kind].things) ++tallies_[key][kind].all;
    for (const cases::CoveredThing& thing : coverage_[kind].missing)
      tallies_[thing.key][kind].missing.push_back(&thing);
    for (const cases::CoveredThing& thing : coverage_[kind].left_out)
      tallies_[thing.key][kind].left_out.push_back(&thing);
  }
}

std::size_t TestRun::failed() const {
  std::size_t failed = 0;
  for (const TestedFile& file : files_) failed += cases::CountFailed(file.results);
  return failed;
}

Tallies TestRun::Between(const evaluation::ValueKey& first,
                         const evaluation::ValueKey& last) const {
  Tallies sum;
  const auto end = tallies_.upper_bound(last);
  for (auto each = tallies_.lower_bound(first); each != end; ++each) {
    for (std::size_t kind = 0; kind < sum.size(); ++kind) {
      const Tally& tally = each->second[kind];
      sum[kind].all += tally.all;
      for (Tally::Things Tally::*things : kThings) {
        const Tally::Things& more = tally.*things;
        (sum[kind].*things).insert((sum[kind].*things).end(), more.begin(), more.end());
      }
    }
  }
  // As they are in the list that they point into, which is the order of reports.
  for (Tally& tally : sum) {
    for (Tally::Things Tally::*things : kThings)
      std::sort((tally.*things).begin(), (tally.*things).end());
  }
  return sum;
}

}  // namespace rux::page
