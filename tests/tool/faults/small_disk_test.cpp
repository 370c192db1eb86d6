// A disk that is too small, for real.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>

#include "tests/tool/faults/board_folder.h"

namespace {

TEST(SmallDiskTest, HoldsTheOlderFilesOrTheNewOnes) {
  const TempFolder folder;
  const std::string line =
      std::string("LC_ALL=C " RUX_SMALL_DISK " " RUX_PROGRAM " ") + folder.path() + " 2>&1";
  FILE* const script = popen(line.c_str(), "r");
  ASSERT_NE(script, nullptr);
  std::string printed;
  for (int c; (c = std::fgetc(script)) != EOF;) printed += static_cast<char>(c);
  const int status = pclose(script);
  if (WEXITSTATUS(status) == 77) GTEST_SKIP() << "the system does not let anybody mount a disk";
  EXPECT_EQ(printed, "");
  EXPECT_EQ(status, 0);
}

}  // namespace
