#include "reader/messages.h"

#include <dlfcn.h>

#include "ruxcomp/language/paths.h"

namespace reader {
namespace {

using OutputFunction = void (*)(unsigned int size, const char* format, ...);

// The first argument of every message: the size that a host may use for the formatted text.
constexpr unsigned int kOutputSize = 2048;

}  // namespace

void Report(const std::string& path, const char* message, std::uint32_t line) {
  // Not linked against: the reader also serves programs that have no Output.
  const auto output = reinterpret_cast<OutputFunction>(dlsym(RTLD_DEFAULT, "Output"));
  if (output == nullptr) return;
  const std::string base_name(ruxcomp::language::BaseNameOf(path));
  output(kOutputSize, message, base_name.c_str(), line);
}

}  // namespace reader
