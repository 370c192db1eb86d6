// Surroundings that a script mounts around rux: a disk that is too small, and no /proc.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <string>

#include "tests/support/temp_folder.h"

namespace {

// Runs a script over the program and a folder. It prints what is wrong.
void RunMounting(const std::string& script) {
  const TempFolder folder;
  const std::string line = "LC_ALL=C " + script + " " RUX_PROGRAM " " + folder.path() + " 2>&1";
  FILE* const output = popen(line.c_str(), "r");
  ASSERT_NE(output, nullptr);
  std::string printed;
  for (int c; (c = std::fgetc(output)) != EOF;) printed += static_cast<char>(c);
  const int status = pclose(output);
  if (WEXITSTATUS(status) == 77) GTEST_SKIP() << "the system does not let anybody mount a disk";
  EXPECT_EQ(printed, "");
  EXPECT_EQ(status, 0);
}

TEST(MountsTest, SmallDiskHoldsTheOlderFilesOrTheNewOnes) {
  RunMounting(RUX_FAULTS "/small_disk.sh");
}

TEST(MountsTest, FilesAreWrittenWithoutProc) {
#ifdef RUX_SANITIZED
  GTEST_SKIP() << "AddressSanitizer needs /proc";
#endif
  RunMounting(RUX_FAULTS "/no_proc.sh");
}

}  // namespace
