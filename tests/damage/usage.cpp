#include "tests/damage/usage.h"

#include <malloc.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#ifdef RUX_SANITIZED
#include <sanitizer/lsan_interface.h>
#endif

Usage CurrentUsage() {
  const std::filesystem::directory_iterator open_files("/proc/self/fd");
  Usage usage;
  usage.files = static_cast<std::size_t>(std::distance(begin(open_files), end(open_files)));
  std::ifstream("/proc/self/statm") >> usage.pages;
  const auto heap = mallinfo2();
  usage.heap = heap.uordblks + heap.hblkhd;
  return usage;
}

#ifdef RUX_SANITIZED
bool FoundLeaks() { return __lsan_do_recoverable_leak_check() != 0; }
LeaksAllowed::LeaksAllowed() { __lsan_disable(); }
LeaksAllowed::~LeaksAllowed() { __lsan_enable(); }
#else
bool FoundLeaks() { return false; }
LeaksAllowed::LeaksAllowed() = default;
LeaksAllowed::~LeaksAllowed() = default;
#endif
