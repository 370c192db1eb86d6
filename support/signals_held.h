// Work that signals must not cut in two.
#ifndef SUPPORT_SIGNALS_HELD_H_
#define SUPPORT_SIGNALS_HELD_H_

#include <csignal>

namespace rux::support {

// While there is one, no signal is delivered that can be held back. What came in the meantime has
// its effect when it goes: an interrupt still ends the process, only between two pieces of work.
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

}  // namespace rux::support

#endif  // SUPPORT_SIGNALS_HELD_H_
