// Signals that are waited for instead of coming at any time.
#ifndef SUPPORT_AWAITED_SIGNALS_H_
#define SUPPORT_AWAITED_SIGNALS_H_

#include <csignal>

namespace rux::support {

// While there is one: the end of a child process, and the signals by which people and other
// programs end this one, but for those that it was told to ignore.
class AwaitedSignals {
 public:
  AwaitedSignals() {
    // Children that nobody waits for would not be told of.
    std::signal(SIGCHLD, SIG_DFL);
    sigemptyset(&awaited_);
    for (const int signal : {SIGCHLD, SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
      struct sigaction action;
      if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
        sigaddset(&awaited_, signal);
      }
    }
    sigprocmask(SIG_BLOCK, &awaited_, &before_);
  }
  ~AwaitedSignals() { LetThrough(); }
  AwaitedSignals(const AwaitedSignals&) = delete;
  AwaitedSignals& operator=(const AwaitedSignals&) = delete;

  // The next one that comes.
  int Wait() const {
    int signal;
    // cppcheck-suppress redundantContinue
    while ((signal = sigwaitinfo(&awaited_, nullptr)) < 0) continue;
    return signal;
  }

  // From here on they have their effect, as for a child process.
  void LetThrough() const { sigprocmask(SIG_SETMASK, &before_, nullptr); }

  // Ends this process by the signal.
  void EndWith(int signal) const {
    std::raise(signal);
    // cppcheck-suppress unreachableCode
    LetThrough();
  }

 private:
  sigset_t awaited_;
  sigset_t before_;
};

}  // namespace rux::support

#endif  // SUPPORT_AWAITED_SIGNALS_H_
