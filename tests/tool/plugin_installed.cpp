// Preloaded into rux: the file that RUX_TEST_PLUGIN names takes the place of the reader plug-in.
#include <dlfcn.h>

#include <cstdlib>
#include <cstring>

extern "C" __attribute__((visibility("default"))) void* dlopen(const char* path, int flags) {
  using Dlopen = void*(const char*, int);
  static auto* real = reinterpret_cast<Dlopen*>(dlsym(RTLD_NEXT, "dlopen"));
  const bool is_plugin = path && std::strcmp(path, RUX_PLUGIN_PATH) == 0;
  return real(is_plugin ? std::getenv("RUX_TEST_PLUGIN") : path, flags);
}
