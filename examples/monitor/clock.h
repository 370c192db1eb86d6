// When the next round begins, and what the rest of the system wants meanwhile.
#ifndef MONITOR_CLOCK_H_
#define MONITOR_CLOCK_H_

#include <chrono>
#include <csignal>
#include <cstdint>

namespace monitor {

enum class Wake { kRound, kReload, kStop };

class Clock {
 public:
  // From now on, SIGHUP, SIGINT and SIGTERM are what Wait() returns.
  Clock();

  // Rounds begin at whole multiples of the interval, however long each of them takes. 0: one after
  // the other.
  void Set(std::chrono::milliseconds interval) { interval_ = interval; }

  Wake Wait();

  // How many rounds were left out, for the one before took too long.
  std::uint64_t missed() const { return missed_; }

 private:
  sigset_t signals_;
  std::chrono::milliseconds interval_{0};
  std::chrono::steady_clock::time_point round_;  // when the present one began
  std::uint64_t missed_ = 0;
};

}  // namespace monitor

#endif  // MONITOR_CLOCK_H_
