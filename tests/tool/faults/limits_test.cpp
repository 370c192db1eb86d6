// Limits that a process may be given: on the size of files, on open files, on memory.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "tests/tool/faults/rux_process.h"
#include "tests/tool/faults/verdict.h"

namespace {

class LimitsTest : public testing::Test {
 protected:
  Ended RunWith(const Task& task, int resource, rlim_t most) const {
    Fill(folder_, task.before);
    const auto limit = [&] {
      const rlimit both = {most, most};
      setrlimit(static_cast<__rlimit_resource>(resource), &both);
    };
    return RuxProcess(folder_.path(), task.arguments, limit).Wait();
  }

  // Runs the task with one limit after the other, up to the first that is none.
  void ExpectReasons(const Task& task, int resource, rlim_t first, rlim_t step) const {
    bool is_done = false;
    for (rlim_t most = first; !is_done; most += step) {
      const Ended ended = RunWith(task, resource, most);
      is_done = ended.exit_status == 0;
      EXPECT_EQ(WrongEnd(task, ended, ContentsOf(folder_)), "")
          << task.name << " with " << most << "\nexit status " << ended.exit_status << ", signal "
          << ended.signal << '\n'
          << ended.errors;
      ASSERT_LT(most, first + 1000 * step);
    }
  }

  const TempFolder folder_;
};

TEST_F(LimitsTest, OnTheSizeOfFiles) {
  for (const Task& task : Tasks()) ExpectReasons(task, RLIMIT_FSIZE, 0, 64);
}

// A sanitizer opens files of its own and reserves more memory than there is.
#ifndef RUX_SANITIZED
TEST_F(LimitsTest, OnOpenFiles) {
  // Fewer do not let the program be loaded.
  for (const Task& task : Tasks()) ExpectReasons(task, RLIMIT_NOFILE, 4, 1);
}

TEST_F(LimitsTest, OnMemory) {
  std::string script = "[PROPERTY]\n";
  for (int i = 0; i < 20000; ++i) script += "Property" + std::to_string(i) + " = some text\n";
  const Contents before = {{"board.rux", script}, {"board.meta", "older"}};
  const Arguments arguments = {"compile", "board.rux", "-g", "board.metad"};
  const Task task = {"large script", arguments, before, Done(before, arguments)};
  // Less does not let the program be loaded.
  constexpr rlim_t kMiB = 1 << 20;
  rlim_t least = kMiB;
  while (RunWith({"", {"--version"}, {}, {}}, RLIMIT_AS, least).exit_status != 0) least += kMiB;
  ExpectReasons(task, RLIMIT_AS, least + kMiB, kMiB / 2);
}

// A script without end must not take the memory of the machine.
TEST_F(LimitsTest, AScriptWithoutEndIsRefused) {
  constexpr rlim_t kMiB = 1 << 20;
  const Task task = {
      "", {"compile", "/dev/zero", "-o", "board.meta"}, {{"board.meta", "older"}}, {}};
  const Ended ended = RunWith(task, RLIMIT_AS, 256 * kMiB);
  EXPECT_EQ(ended.exit_status, 3);
  EXPECT_EQ(ended.errors,
            "/dev/zero:1: error: not enough memory for the script [out-of-memory]\n"
            "rux: error: Cannot allocate memory\n");
  EXPECT_EQ(ContentsOf(folder_), task.before);
}
#endif

}  // namespace
