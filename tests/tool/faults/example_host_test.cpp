// The example of a host program notices what it cannot print.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <string>

#include "tests/tool/faults/verdict.h"

namespace {

TEST(ExampleHostTest, MissesNoFailedOutput) {
  const Task& task = Tasks().front();
  const TempFolder folder;
  Fill(folder, task.done);
  const std::string run = RUX_EXAMPLE_HOST " " + folder / "board.meta";
  EXPECT_EQ(WEXITSTATUS(std::system((run + " > /dev/null").c_str())), 0);
  EXPECT_EQ(WEXITSTATUS(std::system((run + " > /dev/full 2> /dev/null").c_str())), 1);
}

}  // namespace
