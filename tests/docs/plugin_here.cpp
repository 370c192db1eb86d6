// Preloaded into programs: the place where the reader plug-in is installed leads to the one of this
// build.
#include <dlfcn.h>

#include <cstring>

extern "C" __attribute__((visibility("default"))) void* dlopen(const char* path, int flags) {
  using Dlopen = void*(const char*, int);
  static auto* real = reinterpret_cast<Dlopen*>(dlsym(RTLD_NEXT, "dlopen"));
  const bool is_plugin = path && std::strcmp(path, RUX_PLUGIN_PATH) == 0;
  return real(is_plugin ? RUX_BUILT_PLUGIN : path, flags);
}
