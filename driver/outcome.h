// What comes together of the runs over several scripts.
#ifndef DRIVER_OUTCOME_H_
#define DRIVER_OUTCOME_H_

#include <cstddef>
#include <string>
#include <vector>

#include "diagnostics/report.h"
#include "support/failure.h"
#include "support/workers.h"

namespace rux::driver {

// Counts that the processes of all scripts write to.
class SharedCounts {
 public:
  // Throws a Failure.
  explicit SharedCounts(std::size_t count);
  ~SharedCounts();
  SharedCounts(const SharedCounts&) = delete;
  SharedCounts& operator=(const SharedCounts&) = delete;

  // Zeros at first.
  diagnostics::Counts& operator[](std::size_t i) const;

 private:
  const std::size_t messages_;  // all that there are, and one for the end
  const std::size_t size_;
  void* const memory_;
};

class Outcome {
 public:
  // At most so many.
  explicit Outcome(std::size_t scripts) : counts_(scripts), most_(scripts) {}

  // For the process of that script.
  diagnostics::Counts& CountsOf(std::size_t i) const { return counts_[i]; }

  void Add(std::size_t i, const std::string& script, const support::JobResult& done);

  // All scripts, without their diagnostics.
  diagnostics::Report Total() const;

  // What people are told at the end. `folds`: with a table of messages that occur several times.
  std::string Summary(bool folds) const;

  support::ExitStatus worst() const { return worst_; }
  bool has_wrong_usage() const { return has_wrong_usage_; }

 private:
  bool HasTable(const std::vector<diagnostics::MessageCount>& by_message) const;
  std::string FailedText() const;

  const SharedCounts counts_;
  const std::size_t most_;
  std::size_t scripts_ = 0;  // so far
  std::vector<std::string> failed_;
  std::size_t undone_ = 0;
  bool is_complete_ = true;
  bool has_wrong_usage_ = false;
  support::ExitStatus worst_ = support::ExitStatus::kDone;
};

}  // namespace rux::driver

#endif  // DRIVER_OUTCOME_H_
