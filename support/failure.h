// The end of a command that cannot do what it was asked for.
#ifndef SUPPORT_FAILURE_H_
#define SUPPORT_FAILURE_H_

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

#include "support/exit_status.h"

namespace rux::support {

// Thrown by whatever finds out; main() prints the text behind "rux: error: " and exits with the
// status. The text is one line, or several that each tell one more thing.
class Failure : public std::runtime_error {
 public:
  Failure(ExitStatus status, const std::string& text) : std::runtime_error(text), status_(status) {}

  ExitStatus status() const { return status_; }

 private:
  ExitStatus status_;
};

// A system call on `path` failed with `error`: "cannot write board.meta: No space left on device".
inline Failure SystemFailure(const std::string& what, const std::string& path, int error = errno) {
  return Failure(ExitStatus::kTrouble, what + " " + path + ": " + std::strerror(error));
}

}  // namespace rux::support

#endif  // SUPPORT_FAILURE_H_
