#include "support/temporary_name.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <vector>

#include "tests/support/temp_folder.h"

namespace rux::support {
namespace {

// "x": only where no file has the name.
bool MakeFile(const char* name) {
  std::FILE* const file = std::fopen(name, "wbx");
  return file != nullptr && std::fclose(file) == 0;
}

TEST(TemporaryName, ThereMayBeManyAtATime) {
  constexpr std::size_t kMany = 1500;
  const TempFolder folder;
  std::vector<TemporaryName> names;
  std::size_t tries = 0;
  for (std::size_t i = 0; i < kMany; ++i) {
    names.emplace_back(folder.path(), [&](const char* name) {
      ++tries;
      return MakeFile(name);
    });
    ASSERT_TRUE(names.back().is_there());
  }
  EXPECT_EQ(tries, kMany);
}

}  // namespace
}  // namespace rux::support
