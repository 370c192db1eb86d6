#include "tool/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "tool/failure.h"

namespace rux {

void OccupyStandardStreams() {
  for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(number, F_GETFD) >= 0) continue;
    // Opened the wrong way round, for any use of it to fail. The lowest free number is this one.
    if (open("/dev/null", number == STDIN_FILENO ? O_WRONLY : O_RDONLY) < 0) return;
  }
}

void PrintOut(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }
void PrintError(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stderr); }

void FlushStandardOutput() {
  errno = 0;
  const bool flushed = std::fflush(stdout) == 0;
  if (!flushed || std::ferror(stdout) != 0) throw SystemFailure("cannot write", "standard output");
}

}  // namespace rux
