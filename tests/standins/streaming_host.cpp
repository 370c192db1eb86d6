// A host program whose Output writes to a standard stream.
#include <cstdarg>
#include <cstdio>
#include <iostream>

#include "ruxcomp/ruxcomp.h"

extern "C" __attribute__((visibility("default"))) void Output(unsigned int size, const char* format,
                                                              ...) {
  char text[2048];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, size, format, arguments);
  va_end(arguments);
  std::cout << text;
}

int main() { std::cout << gcGetSectCount(RUX_SECT_SENSOR) << " sensors\n"; }
