#include "support/failure.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <exception>
#include <functional>
#include <initializer_list>
#include <new>
#include <string>
#include <string_view>

#include "support/descriptor.h"
#include "support/safe_text.h"
#include "support/standard_streams.h"

namespace rux::support {
namespace {

// The last words: a failure to write them has no place left to be reported.
ExitStatus EndWith(ExitStatus status, std::initializer_list<std::string_view> pieces) {
  for (const std::string_view piece : pieces) {
    if (!WriteAll(STDERR_FILENO, piece)) break;
  }
  return status;
}

}  // namespace

Failure SystemFailure(const std::string& what, const std::string& path, int error) {
  return Failure(ExitStatus::kTrouble, "{} {}: {}", what, path, std::strerror(error));
}

ExitStatus RunAndReportFailures(const std::function<ExitStatus()>& run) {
  constexpr std::string_view kLead = "rux: error: ";
  try {
    const ExitStatus status = run();
    CloseStandardOutput();
    return status;
  } catch (const Failure& failure) {
    return EndWith(failure.status(), {kLead, failure.what(), "\n"});
  } catch (const std::bad_alloc&) {
    return EndWith(ExitStatus::kTrouble, {kLead, std::strerror(ENOMEM), "\n"});
  } catch (const std::exception& error) {
    return EndWith(ExitStatus::kTrouble, {kLead, SafeText(error.what()), "\n"});
  }
}

}  // namespace rux::support
