#include "tests/damage/confined.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

namespace {

constexpr int kFailed = 101;

std::size_t AddressSpace() {
  std::size_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

void Limit(int resource, rlim_t most) {
  const rlimit limit = {most, most};
  setrlimit(static_cast<__rlimit_resource_t>(resource), &limit);
}

int Run(std::size_t address_space, const std::function<int()>& body) {
#ifdef RUX_SANITIZED
  constexpr rlim_t kSeconds = 200;
  static_cast<void>(address_space);
#else
  constexpr rlim_t kSeconds = 10;
  Limit(RLIMIT_AS, address_space);
#endif
  Limit(RLIMIT_CORE, 0);
  Limit(RLIMIT_CPU, kSeconds);
  try {
    return body();
  } catch (...) {
    return kFailed;
  }
}

}  // namespace

std::optional<int> Confined(std::size_t memory, const std::function<int()>& body) {
  const std::size_t address_space = AddressSpace() + memory;
  const pid_t process = fork();
  if (process == 0) _exit(Run(address_space, body));
  int status = 0;
  if (process < 0 || waitpid(process, &status, 0) != process) return std::nullopt;
  if (!WIFEXITED(status) || WEXITSTATUS(status) >= kFailed) return std::nullopt;
  return WEXITSTATUS(status);
}
