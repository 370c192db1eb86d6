#include "tests/support/host.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "ruxcomp/output.h"

namespace {

// Function-local: the library calls in here before the constructors of globals ran.
std::vector<std::string>& Messages() {
  static std::vector<std::string> messages;
  return messages;
}

std::string& Plugin() {
  static std::string path =
      std::getenv("RUX_TEST_PLUGIN") ? std::getenv("RUX_TEST_PLUGIN") : RUX_BUILT_PLUGIN;
  return path;
}

int loads = 0;

}  // namespace

extern "C" __attribute__((visibility("default"))) void Output(unsigned int size, const char* format,
                                                              ...) {
  EXPECT_EQ(size, 2048u);
  va_list arguments;
  va_start(arguments, format);
  char* text = nullptr;
  const int length = vasprintf(&text, format, arguments);
  va_end(arguments);
  ASSERT_GE(length, 0);
  Messages().emplace_back(text, static_cast<std::size_t>(length));
  std::free(text);
}

// Stands before the C library's: the library's fixed path leads to the plug-in that the test wants.
extern "C" __attribute__((visibility("default"))) void* dlopen(const char* path, int flags) {
  using Dlopen = void*(const char*, int);
  static auto* real = reinterpret_cast<Dlopen*>(dlsym(RTLD_NEXT, "dlopen"));
  if (!path || std::strcmp(path, RUX_PLUGIN_PATH) != 0) return real(path, flags);
  ++loads;
  return Plugin().empty() ? nullptr : real(Plugin().c_str(), flags);
}

namespace host {

std::vector<std::string> TakeMessages() {
  std::vector<std::string> taken;
  taken.swap(Messages());
  return taken;
}

void SetPlugin(const std::string& path) { Plugin() = path; }

int PluginLoads() { return loads; }

}  // namespace host
