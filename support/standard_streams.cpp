#include "support/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>

#include "support/descriptor.h"
#include "support/failure.h"

namespace rux::support {
namespace {

bool g_has_printed = false;

}  // namespace

void OccupyStandardStreams() {
  for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(number, F_GETFD) >= 0) continue;
    // Opened the wrong way round, for any use of it to fail. The lowest free number is this one.
    if (open("/dev/null", number == STDIN_FILENO ? O_WRONLY : O_RDONLY) < 0) return;
  }
}

void PrintOut(std::string_view text) {
  g_has_printed = true;
  if (!WriteAll(STDOUT_FILENO, text)) throw SystemFailure("cannot write", "standard output");
}

void PrintError(std::string_view text) {
  if (!WriteAll(STDERR_FILENO, text) && errno != EBADF) {
    throw SystemFailure("cannot write", "standard error");
  }
}

void CloseStandardOutput() {
  if (!g_has_printed) return;
  if (!Descriptor(STDOUT_FILENO).Close()) throw SystemFailure("cannot write", "standard output");
}

}  // namespace rux::support
