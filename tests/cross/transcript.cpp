// transcript SCRIPT META METAD: compiles, without the times of creation, and prints what comes of
// it.
#include "tests/cross/transcript.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fstream>

#include "ruxcomp/ruxcomp.h"

extern "C" __attribute__((visibility("default"))) void Output(unsigned int, const char* format,
                                                              ...) {
  va_list arguments;
  va_start(arguments, format);
  std::vprintf(format, arguments);
  va_end(arguments);
}

// Stands before the C library's: the library's fixed path leads to the plug-in of this build.
extern "C" __attribute__((visibility("default"))) void* dlopen(const char* path, int flags) {
  using Dlopen = void*(const char*, int);
  static auto* real = reinterpret_cast<Dlopen*>(dlsym(RTLD_NEXT, "dlopen"));
  const bool is_plugin = path != nullptr && std::strcmp(path, RUX_PLUGIN_PATH) == 0;
  return real(is_plugin ? RUX_BUILT_PLUGIN : path, flags);
}

namespace {

bool Compile(std::string script, const std::string& meta, const std::string& metad) {
  std::replace(script.begin(), script.end(), '/', '\\');
  if (!gccCompStart(script)) return false;
  gccParse();
  const bool done = gccCheck() && gccOutput(meta) && gccOutputD(metad);
  gccCompEnd();
  return done;
}

void ClearCreationTime(const std::string& path) {
  constexpr std::streamoff kTimeOffset = 20;
  std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
  file.seekp(kTimeOffset);
  file.write("\0\0\0\0", 4);
}

// Whatever the clock of the machine that wrote it: after what 32 bits can say.
bool DateIn2040(const std::string& path) {
  constexpr timespec kIn2040 = {2208988800, 0};
  const timespec times[] = {kIn2040, kIn2040};
  return utimensat(AT_FDCWD, path.c_str(), times, 0) == 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  if (!Compile(argv[1], argv[2], argv[3])) return 1;
  ClearCreationTime(argv[2]);
  ClearCreationTime(argv[3]);
  if (!DateIn2040(argv[2]) || !DateIn2040(argv[3])) return 1;
  PrintAnswers(argv[2]);
  PrintDebugAnswers(argv[3]);
  PrintDamage(argv[2]);
  return std::fflush(stdout) == 0 ? 0 : 1;
}
