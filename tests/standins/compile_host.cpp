// A host program: checks the script that it is given and prints what it hears. It does nothing
// about the reader plug-in; linked with the reader, it exports the plug-in's functions itself.
#include <cstdarg>
#include <cstdio>

#include "ruxcomp/compile.h"

extern "C" __attribute__((visibility("default"))) void Output(unsigned int, const char* format,
                                                              ...) {
  va_list arguments;
  va_start(arguments, format);
  std::vprintf(format, arguments);
  va_end(arguments);
}

int main(int, char** arguments) {
  const std::uint32_t started = gccCompStart(arguments[1]);
  std::printf("gccCompStart: %u\n", started);
  if (!started) return 1;
  gccParse();
  const std::uint32_t valid = gccCheck();
  std::printf("gccCheck: %u\n", valid);
  gccCompEnd();
  return 0;
}
