// A host program that loads the library, checks a script and unloads the library, once for every
// script that it is given. It carries the reader.
//
//   loading_host LIBRARY SCRIPT...
#include <dlfcn.h>

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <string>

extern "C" [[gnu::visibility("default"), gnu::format(printf, 2, 3)]] void Output(unsigned int,
                                                                                 const char* format,
                                                                                 ...) {
  va_list arguments;
  va_start(arguments, format);
  std::vprintf(format, arguments);
  va_end(arguments);
}

namespace {

template <class Function>
Function* Find(void* library, const char* name) {
  return reinterpret_cast<Function*>(dlsym(library, name));
}

}  // namespace

int main(int, char** arguments) {
  const char* path = arguments[1];
  for (char** script = arguments + 2; *script; ++script) {
    void* library = dlopen(path, RTLD_NOW);
    if (!library) return 1;
    std::printf("loaded\n");
    Find<std::uint32_t(const std::string&)>(library, "gccCompStart")(*script);
    Find<std::uint32_t()>(library, "gccParse")();
    Find<std::uint32_t()>(library, "gccCheck")();
    Find<void()>(library, "gccCompEnd")();
    dlclose(library);
    std::printf(dlopen(path, RTLD_NOW | RTLD_NOLOAD) ? "still loaded\n" : "unloaded\n");
  }
  return 0;
}
