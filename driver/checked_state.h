// How good a machine is by what a check finds in it.
#ifndef DRIVER_CHECKED_STATE_H_
#define DRIVER_CHECKED_STATE_H_

#include <map>
#include <string>

#include "driver/compile_run.h"

namespace rux::driver {

class CheckedState {
 public:
  CheckedState() = default;
  explicit CheckedState(const Checked& checked);

  // "a warning that it does not have now: ..."; empty when it is at least as good: all is looked
  // for, no warning of a loss or a suspicion is new, and the errors are no more than before. An
  // error keeps the library from looking further: once none of the former ones is left, others may
  // appear.
  std::string WhyWorseThan(const CheckedState& before) const;

 private:
  // The texts by id, file, section and entry: lines and columns move.
  using Findings = std::multimap<std::string, std::string>;

  static const std::string* FindNew(const Findings& now, const Findings& before);

  bool is_complete_ = false;
  Findings errors_;
  Findings warnings_;
};

}  // namespace rux::driver

#endif  // DRIVER_CHECKED_STATE_H_
