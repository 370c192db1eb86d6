// A part of a test in a process of its own: the library's state is process-wide and partly never
// reset.
#ifndef TESTS_SUPPORT_OWN_PROCESS_H_
#define TESTS_SUPPORT_OWN_PROCESS_H_

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

// Runs `body` in a process of its own, with a library that is as this process left it. What it
// finds wrong fails the test.
template <typename Body>
void InOwnProcess(Body body) {
  const auto findings = [] {
    return testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
  };
  std::fflush(nullptr);
  const pid_t process = fork();
  ASSERT_GE(process, 0);
  if (process == 0) {
    const int before = findings();
    [&]() noexcept { body(); }();
    std::fflush(nullptr);
    _exit(findings() == before ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(process, &status, 0), process);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "status " << status;
}

#endif  // TESTS_SUPPORT_OWN_PROCESS_H_
