// How a command ends: its exit status, and the failure that ends it early.
#ifndef SUPPORT_FAILURE_H_
#define SUPPORT_FAILURE_H_

#include <cerrno>
#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>

#include "support/safe_text.h"

namespace rux::support {

// What every command of rux answers to the shell.
enum class ExitStatus {
  kDone = 0,
  kFindings = 1,    // the script has errors; what was asked for is not there
  kWrongUsage = 2,  // the command line makes no sense
  kTrouble = 3,     // a file cannot be read or written, or is damaged
};

// Thrown by whatever finds out; RunAndReportFailures() prints the text after "rux: error: " and
// answers the status.
class Failure : public std::runtime_error {
 public:
  // The text is one line, or several that each report one more thing, as SafeFormat() makes it:
  // names come from anywhere.
  template <std::size_t kSize, class... Values>
  Failure(ExitStatus status, const char (&format)[kSize], const Values&... values)
      : std::runtime_error(SafeFormat(format, values...)), status_(status) {}

  ExitStatus status() const { return status_; }

 private:
  ExitStatus status_;
};

// A system call on `path` failed with `error`: "cannot write board.meta: No space left on device".
Failure SystemFailure(const std::string& what, const std::string& path, int error = errno);

// What the process is to exit with after `run`. Whatever that throws is reported on standard error,
// and so is a failure to write what it printed.
ExitStatus RunAndReportFailures(const std::function<ExitStatus()>& run);

}  // namespace rux::support

#endif  // SUPPORT_FAILURE_H_
