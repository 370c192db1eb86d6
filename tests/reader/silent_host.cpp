// A host program without Output: silent_host PLUGIN SCRIPT prints how many sections the script has.
#include <dlfcn.h>

#include <cstdint>
#include <cstdio>

#include "reader/exports.h"

namespace {

template <typename Function>
Function LookUp(void* plugin, const char* name) {
  return reinterpret_cast<Function>(dlsym(plugin, name));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  if (dlsym(RTLD_DEFAULT, "Output") != nullptr) return 3;
  void* plugin = dlopen(argv[1], RTLD_LAZY);
  if (plugin == nullptr) return 4;
  void* file = LookUp<decltype(&RSOpenFile)>(plugin, "RSOpenFile")(argv[2]);
  LookUp<decltype(&RSParse)>(plugin, "RSParse")(file);
  const auto enum_section = LookUp<decltype(&RSEnumSection)>(plugin, "RSEnumSection");
  std::uint32_t count = 0;
  while (enum_section(file, count, 0) != nullptr) ++count;
  std::printf("%u\n", count);
  LookUp<decltype(&RSCloseFile)>(plugin, "RSCloseFile")(&file);
  dlclose(plugin);
  return 0;
}
