// Preloaded into a program: counts its allocations in the first eight bytes of a file, which it and
// the processes that it forks share. A program without that file is left alone.
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

// What the C library calls its own.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* block, std::size_t size);
// NOLINTEND(bugprone-reserved-identifier)

namespace {

std::uint64_t* counter = nullptr;

__attribute__((constructor)) void OpenCounter() {
  const char* path = std::getenv("RUX_BENCH_ALLOCATIONS");
  const int file = path ? open(path, O_RDWR | O_CLOEXEC) : -1;
  if (file < 0) return;
  void* mapped = mmap(nullptr, sizeof *counter, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  close(file);
  if (mapped != MAP_FAILED) counter = static_cast<std::uint64_t*>(mapped);
}

void Count() {
  if (counter) __atomic_fetch_add(counter, 1, __ATOMIC_RELAXED);
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void* malloc(std::size_t size) {
  Count();
  return __libc_malloc(size);
}

extern "C" __attribute__((visibility("default"))) void* calloc(std::size_t count,
                                                               std::size_t size) {
  Count();
  return __libc_calloc(count, size);
}

extern "C" __attribute__((visibility("default"))) void* realloc(void* block, std::size_t size) {
  Count();
  return __libc_realloc(block, size);
}
