// Test cases of the machine of a page, and how much of it they evaluate.
#ifndef PAGE_TEST_RUN_H_
#define PAGE_TEST_RUN_H_

#include <array>
#include <cstddef>
#include <iterator>
#include <map>
#include <vector>

#include "cases/case.h"
#include "cases/coverage.h"
#include "cases/run.h"
#include "evaluation/target.h"
#include "machine/machine.h"
#include "profile/profile.h"

namespace rux::page {

struct TestedFile {
  cases::CaseFile file;
  std::vector<cases::CaseResult> results;
};

// How much of a thing is covered, of one kind of coverage.
struct Tally {
  using Things = std::vector<const cases::CoveredThing*>;
  std::size_t all = 0;
  Things missing = {};
  Things left_out = {};  // none of them
};
// In the order of cases::kCoveredKinds.
using Tallies = std::array<Tally, std::size(cases::kCoveredKinds)>;

// Runs the cases when it is made.
class TestRun {
 public:
  // The files are of this machine.
  TestRun(const machine::Machine& machine, profile::Profile profile,
          std::vector<cases::CaseFile> files);
  // What points into a part of it stays valid when it moves.
  TestRun(TestRun&&) = default;
  TestRun& operator=(TestRun&&) = default;

  const profile::Profile& profile() const { return profile_; }
  const std::vector<TestedFile>& files() const { return files_; }
  // By all files together.
  const std::vector<cases::CoveredKind>& coverage() const { return coverage_; }
  std::size_t failed() const;

  // Of what is between the keys, both included. Valid as long as this.
  Tallies Between(const evaluation::ValueKey& first, const evaluation::ValueKey& last) const;

 private:
  profile::Profile profile_;
  std::vector<TestedFile> files_;
  std::vector<cases::CoveredKind> coverage_;
  std::map<evaluation::ValueKey, Tallies> tallies_;
};

}  // namespace rux::page

#endif  // PAGE_TEST_RUN_H_
