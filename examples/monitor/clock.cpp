#include "clock.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <ctime>

namespace monitor {

using std::chrono::steady_clock;

Clock::Clock() : round_(steady_clock::now()) {
  sigemptyset(&signals_);
  for (const int signal : {SIGHUP, SIGINT, SIGTERM}) sigaddset(&signals_, signal);
  sigprocmask(SIG_BLOCK, &signals_, nullptr);
}

Wake Clock::Wait() {
  const steady_clock::duration left = round_ + interval_ - steady_clock::now();
  const std::int64_t rest = std::max<std::int64_t>(std::chrono::nanoseconds(left).count(), 0);
  constexpr std::int64_t kNanoseconds = 1'000'000'000;
  const timespec wait = {static_cast<std::time_t>(rest / kNanoseconds),
                         static_cast<long>(rest % kNanoseconds)};
  const int signal = sigtimedwait(&signals_, nullptr, &wait);
  if (signal < 0 && errno == EINTR) return Wait();
  if (signal > 0) return signal == SIGHUP ? Wake::kReload : Wake::kStop;
  const steady_clock::time_point now = steady_clock::now();
  if (interval_.count() != 0 && now >= round_ + interval_) {
    const auto rounds = (now - round_) / interval_;
    missed_ += static_cast<std::uint64_t>(rounds - 1);
    round_ += rounds * interval_;
  }
  return Wake::kRound;
}

}  // namespace monitor
