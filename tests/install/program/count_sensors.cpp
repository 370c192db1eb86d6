// A program outside the project that uses the installed library.
#include <ruxcomp/ruxcomp.h>

#include <cstdio>

// The missing plug-in is of no interest to a program that only asks.
extern "C" void Output(unsigned int, const char*, ...) {}

int main(int argc, char** argv) {
  if (argc != 2 || !gcInit(argv[1])) return 1;
  std::printf("%u sensor(s)\n", gcGetSectCount(RUX_SECT_SENSOR));
  gcUnInit();
  return 0;
}
