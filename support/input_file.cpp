#include "support/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <string_view>

#include "support/descriptor.h"
#include "support/failure.h"

namespace rux::support {
namespace {

bool BeginsWith(std::string_view text, std::string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

bool WasGivenOpen(std::string_view path) {
  return path == "/dev/stdin" || BeginsWith(path, "/dev/fd/") || BeginsWith(path, "/proc/self/fd/");
}

// A folder fails to be read, with the system's own reason.
void ExpectFile(const std::string& path, const struct stat& status) {
  if (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode) || WasGivenOpen(path)) return;
  const char* kind = "a device";
  if (S_ISFIFO(status.st_mode)) kind = "a named pipe";
  if (S_ISSOCK(status.st_mode)) kind = "a socket";
  throw Failure(ExitStatus::kTrouble, "cannot load {}: it is {}", path, kind);
}

}  // namespace

Descriptor OpenInput(const std::string& path) {
  if (path == kStandardInput) {
    Descriptor input(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0));
    if (!input.is_open()) throw SystemFailure("cannot load", "standard input");
    return input;
  }
  struct stat status;
  if (stat(path.c_str(), &status) != 0) throw SystemFailure("cannot load", path);
  ExpectFile(path, status);
  // Another file may have come under the name since: opening that one does not wait either.
  Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file.is_open() || fstat(file.number(), &status) != 0) {
    throw SystemFailure("cannot load", path);
  }
  ExpectFile(path, status);
  return file;
}

}  // namespace rux::support
