#include <malloc.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <cstdint>
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

bool IsLimited(int resource) {
  rlimit limit{};
  return getrlimit(static_cast<__rlimit_resource_t>(resource), &limit) != 0 ||
         limit.rlim_cur != RLIM_INFINITY;
}

// Lets the heap grow once and asks for huge pages: a model of 200 megabytes takes 2,000 page faults
// instead of 45,000. The first megabytes stay as they are, and most runs need no more.
// Where memory is limited, all of it is left to what needs it.
void UseHugePages() {
  if (IsLimited(RLIMIT_AS) || IsLimited(RLIMIT_DATA)) return;
  constexpr std::size_t kHugePage = std::size_t{2} << 20;
  constexpr int kHeap = 256 << 20;
  mallopt(M_TOP_PAD, kHeap);
  auto* const grows_heap = static_cast<char*>(std::malloc(kHugePage));
  const std::size_t to_boundary =
      kHugePage - reinterpret_cast<std::uintptr_t>(grows_heap) % kHugePage;
  char* const first = grows_heap + to_boundary + kHugePage;
  const std::ptrdiff_t size = static_cast<char*>(sbrk(0)) - first;
  if (size > 0 && size <= kHeap) madvise(first, static_cast<std::size_t>(size), MADV_HUGEPAGE);
  std::free(grows_heap);
}

// A compile releases much of its memory together and asks for large blocks one after the other. By
// default the allocator keeps small freed pieces apart and joins them now and then, and returns
// large blocks to the system although the next one is needed right away.
void FitAllocatorToModels() {
  if (std::getenv("GLIBC_TUNABLES") != nullptr) return;  // the user's own choice
  constexpr int kLargest = 32 << 20;                     // that may be set
  mallopt(M_MXFAST, 0);
  mallopt(M_MMAP_THRESHOLD, kLargest);
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
  UseHugePages();
}

// Ends the process at once, which returns its memory to the system faster than freeing does. A
// build that looks for leaks ends the usual way.
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
