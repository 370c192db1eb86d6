#include "cases/run.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <exception>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "cases/case.h"
#include "cases/case_run.h"
#include "cases/coverage.h"
#include "evaluation/change.h"

namespace rux::cases {
namespace {

// Cases of a list, run by any number of threads.
class SharedRun {
 public:
  SharedRun(const Bench& bench, const std::vector<const Case*>& cases)
      : bench_(bench), cases_(cases), results_(cases.size()), failures_(cases.size()) {}

  // Takes the next case, and the next, until there are none left.
  void RunRest(Coverage& coverage) {
    for (std::size_t at = next_++; at < cases_.size(); at = next_++) {
      try {
        results_[at] = RunCase(bench_, *cases_[at], coverage);
      } catch (...) {
        failures_[at] = std::current_exception();
      }
    }
  }

  // After all of them: throws what the first case that failed to run threw.
  std::vector<CaseResult> Take() {
    for (const std::exception_ptr& failure : failures_) {
      if (failure) std::rethrow_exception(failure);
    }
    return std::move(results_);
  }

 private:
  const Bench& bench_;
  const std::vector<const Case*>& cases_;
  std::atomic<std::size_t> next_ = 0;
  std::vector<CaseResult> results_;
  std::vector<std::exception_ptr> failures_;
};

}  // namespace

std::size_t CountFailed(const std::vector<CaseResult>& results) {
  return static_cast<std::size_t>(std::count_if(
      results.begin(), results.end(), [](const CaseResult& result) { return !result.passes(); }));
}

CaseResult RunCase(const Bench& bench, const Case& source, Coverage& coverage,
                   const evaluation::Change* change) {
  return CaseRun(bench, source, coverage, change).Run();
}

std::vector<CaseResult> RunCases(const Bench& bench, const std::vector<const Case*>& cases,
                                 std::size_t jobs, Coverage& coverage) {
  const std::size_t cores = std::max(1U, std::thread::hardware_concurrency());
  jobs = std::clamp<std::size_t>(std::min(jobs, cases.size()), 1, cores);
  SharedRun run(bench, cases);
  std::vector<Coverage> parts(jobs);
  std::vector<std::thread> threads;
  try {
    for (std::size_t job = 1; job < jobs; ++job)
      threads.emplace_back([&run, &part = parts[job]] { run.RunRest(part); });
  } catch (const std::system_error&) {
    // The system has no more threads: those that it has do the work.
  }
  run.RunRest(parts[0]);
  for (std::thread& thread : threads) thread.join();
  for (const Coverage& part : parts) coverage.Add(part);
  return run.Take();
}

}  // namespace rux::cases
