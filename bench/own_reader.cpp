// Preloaded into programs, or part of them: where a reader plug-in is installed, it is not found.
// What is measured is the reader of this build, which rux carries inside.
#include <dlfcn.h>

#include <cstring>

extern "C" __attribute__((visibility("default"))) void* dlopen(const char* path, int flags) {
  using Dlopen = void*(const char*, int);
  static auto* real = reinterpret_cast<Dlopen*>(dlsym(RTLD_NEXT, "dlopen"));
  return path && std::strcmp(path, RUX_PLUGIN) == 0 ? nullptr : real(path, flags);
}
