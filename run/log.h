// The findings of a run as they come in.
#ifndef RUN_LOG_H_
#define RUN_LOG_H_

#include <deque>
#include <utility>
#include <vector>

#include "findings/message_row.h"
#include "findings/origin.h"
#include "findings/tally.h"
#include "run/findings.h"

namespace rux::run {

class Log {
 public:
  // From now on, of each message so many are kept.
  void Limit(findings::Most most) { tally_ = findings::Tally(most); }

  // What comes in from now on belongs to that phase.
  void Begin(Phase phase);

  // To be asked once for each finding, before it is made: counts it, and answers whether to keep
  // it. What the check repeats after the reading, about the same part of the script, counts once.
  bool Wants(const findings::MessageRow& row, const findings::Origin& origin);
  void Keep(Finding finding) { kept_.push_back(std::move(finding)); }

  const findings::Tally& tally() const { return tally_; }
  std::vector<Finding> Take() { return std::exchange(kept_, {}); }

 private:
  struct Known {
    findings::Origin origin;
    const findings::MessageRow* row;
  };
  static bool IsBefore(const Known& a, const Known& b);

  bool IsRepeated(const findings::MessageRow& row, const findings::Origin& origin);

  Phase phase_ = Phase::kLoad;
  findings::Tally tally_;
  std::vector<Finding> kept_;
  std::deque<Known> read_;  // what the reading found; sorted for the check
};

// The one log of the process: the sink of a run and the function Output, which a plug-in calls and,
// before main, the library, add to it. It can be used before main().
Log& ProcessLog();

}  // namespace rux::run

#endif  // RUN_LOG_H_
