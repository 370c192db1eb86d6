// Signals at the times that suit the work.
#ifndef SUPPORT_SIGNALS_H_
#define SUPPORT_SIGNALS_H_

#include <unistd.h>

#include <csignal>
#include <string_view>

#include "support/failure.h"

namespace rux::support {

// From here on, a mapped file whose end is read after it became shorter, which the kernel answers
// with SIGBUS, ends the process as trouble.
inline void ReportShortenedFiles() {
  std::signal(SIGBUS, [](int) {
    constexpr std::string_view kText = "rux: error: a file was truncated while it was being read\n";
    const ssize_t written = write(STDERR_FILENO, kText.data(), kText.size());
    static_cast<void>(written);
    _exit(static_cast<int>(ExitStatus::kTrouble));
  });
}

// While there is one, no signal is delivered that can be held back. One that arrived in the
// meantime takes effect when it goes: an interrupt still ends the process, only between two pieces
// of work.
class SignalsHeld {
 public:
  SignalsHeld() {
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, &before_);
  }
  ~SignalsHeld() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
  SignalsHeld(const SignalsHeld&) = delete;
  SignalsHeld& operator=(const SignalsHeld&) = delete;

 private:
  sigset_t before_;
};

// While there is one: the end of a child process, and the signals by which users and other
// programs end this one, except those that it ignores.
class AwaitedSignals {
 public:
  AwaitedSignals() {
    // With SIGCHLD ignored, the end of a child would not be signalled.
    std::signal(SIGCHLD, SIG_DFL);
    sigemptyset(&awaited_);
    for (const int signal : {SIGCHLD, SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
      struct sigaction action;
      if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
        sigaddset(&awaited_, signal);
      }
    }
    sigprocmask(SIG_SETMASK, nullptr, &before_);
    Block();
  }
  ~AwaitedSignals() { Unblock(); }
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
  void Unblock() const { sigprocmask(SIG_SETMASK, &before_, nullptr); }

  // After that, they are awaited again.
  void Block() const { sigprocmask(SIG_BLOCK, &awaited_, nullptr); }

  // Ends this process by the signal.
  void EndWith(int signal) const {
    std::raise(signal);
    // cppcheck-suppress unreachableCode
    Unblock();
  }

 private:
  sigset_t awaited_;
  sigset_t before_;
};

}  // namespace rux::support

#endif  // SUPPORT_SIGNALS_H_
