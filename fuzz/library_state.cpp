#include "fuzz/library_state.h"

#include <dlfcn.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <utility>

#include "fuzz/target.h"
#include "ruxcomp/output.h"

namespace {
fuzz::Messages messages;  // initialised before the library's constructors send any
}

extern "C" __attribute__((visibility("default"))) void Output(unsigned int size, const char* format,
                                                              ...) {
  fuzz::Expect(size == 2048, "every message comes with the size 2048");
  fuzz::Expect(format[std::strlen(format) - 1] == '\n', "every message ends in a line feed");
  va_list arguments;
  va_start(arguments, format);
  // The analyzer loses track of va_start here.
  // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
  const int length = std::vsnprintf(nullptr, 0, format, arguments);
  va_end(arguments);
  fuzz::Expect(length > 0, "every message can be formatted");
  ++messages.count;
  messages.characters += static_cast<std::size_t>(length);
}

// Stands before the C library's.
extern "C" __attribute__((visibility("default"))) void* dlopen(const char* /*path*/,
                                                               int /*flags*/) {
  return nullptr;
}

namespace fuzz {

Messages TakeMessages() { return std::exchange(messages, {}); }

}  // namespace fuzz
