// Which loaded objects have the reader of this program.
#include "reader/identity.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

bool HasThisReader(const char* path) {
  void* const handle = dlopen(path, RTLD_LAZY);
  EXPECT_NE(handle, nullptr) << dlerror();
  const bool is_this = ruxcomp::reader::IsThisReader(handle);
  if (handle != nullptr) dlclose(handle);
  return is_this;
}

TEST(IdentityTest, TheBuiltPluginHasIt) { EXPECT_TRUE(HasThisReader(RUX_READER_PLUGIN)); }

TEST(IdentityTest, TheProgramHasIt) { EXPECT_TRUE(HasThisReader(nullptr)); }

TEST(IdentityTest, AnotherReaderHasNot) {
  EXPECT_FALSE(HasThisReader(RUX_STANDINS "/complete.so"));
}

TEST(IdentityTest, AnotherLibraryHasNot) { EXPECT_FALSE(HasThisReader("libc.so.6")); }

TEST(IdentityTest, NothingHasNot) { EXPECT_FALSE(ruxcomp::reader::IsThisReader(nullptr)); }

}  // namespace
