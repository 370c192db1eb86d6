#include <malloc.h>
#include <signal.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <limits>
#include <string_view>

#include "support/failure.h"
#include "support/standard_streams.h"
#include "tool/command_line.h"
#include "tool/completion/completion.h"

namespace {

using rux::support::ExitStatus;

ExitStatus Run(int argc, const char* const* argv) {
  if (argc > 1 && argv[1] == std::string_view(rux::tool::kCompletion)) {
    return rux::tool::Complete({argv + 2, argv + argc});
  }
  return rux::tool::RunCommandLine(argc, argv);
}

// A model is a great many small pieces of memory that are made once and released together. By
// default the allocator keeps small freed pieces apart and joins all of them now and then, and
// gives large ones back to the system that are asked for again right away: each costs up to a tenth
// of a compile.
void FitAllocatorToModels() {
  if (std::getenv("GLIBC_TUNABLES") != nullptr) return;  // the user's own choice
  constexpr int kLargest = 32 << 20;                     // that may be set
  mallopt(M_MXFAST, 0);
  mallopt(M_MMAP_THRESHOLD, kLargest);
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}

// Ends the process at once: what it holds, the system takes back in no time. Where leaks are looked
// for it ends as others do.
[[noreturn]] void End(ExitStatus status) {
#ifdef RUX_SANITIZED
  std::exit(static_cast<int>(status));
#else
  _exit(static_cast<int>(status));
#endif
}

}  // namespace

int main(int argc, char** argv) {
  FitAllocatorToModels();
  rux::support::OccupyStandardStreams();
  // A file that gets too large is a failed write like any other. A pipe without a reader
  // is not: as usual for a command in a pipeline, it ends this one without a word.
  std::signal(SIGXFSZ, SIG_IGN);
  End(rux::support::RunAndReportFailures([&] { return Run(argc, argv); }));
}
