// Signals in the middle of a run: a file is there whole, as it was or as it is to be.
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <random>
#include <sstream>

#include "tests/tool/faults/supervised_run.h"
#include "tests/tool/faults/verdict.h"

namespace {

class InterruptsTest : public testing::TestWithParam<int> {
 protected:
  void SetUp() override {
    if (const char* reason = WhyNotSupervised()) GTEST_SKIP() << reason;
  }

  // Sends the signal when the run makes the call of that ordinal. False: it makes fewer.
  bool InterruptAt(const Task& task, std::size_t ordinal) {
    bool is_sent = false;
    Fill(folder_, task.before);
    const auto send = [&](const CallMade& made, pid_t process) {
      if (made.ordinal == ordinal) is_sent = kill(process, GetParam()) == 0;
      return 0;
    };
    const Ended ended = *RunSupervised(folder_.path(), task.arguments, send);
    EXPECT_EQ(ended.signal, is_sent ? GetParam() : 0) << task.name << ", call " << ordinal;
    return is_sent;
  }

  TempFolder folder_;
};

// All files are old, or all are new, and nothing else is there.
using HeldBackTest = InterruptsTest;

TEST_P(HeldBackTest, AtAnyCallLeavesAllOrNothing) {
  for (const Task& task : GetParam() == SIGINT ? Tasks() : LongestTask()) {
    for (std::size_t ordinal = 0; InterruptAt(task, ordinal); ++ordinal) {
      const Contents after = ContentsOf(folder_);
      EXPECT_TRUE(after == task.before || after == task.done)
          << task.name << ", call " << ordinal << ": " << testing::PrintToString(after);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Signals, HeldBackTest, testing::Values(SIGINT, SIGTERM, SIGHUP));

// Nothing holds this one back. Each file is still old or new; of one that was about to get its
// name, another name may be left.
using KillTest = InterruptsTest;

TEST_P(KillTest, AtAnyCallLeavesEveryFileWhole) {
  for (const Task& task : Tasks()) {
    for (std::size_t ordinal = 0; InterruptAt(task, ordinal); ++ordinal) {
      Contents after = ContentsOf(folder_);
      DropTemporaryNames(after);
      for (const auto& [name, bytes] : task.before) EXPECT_EQ(after.count(name), 1u) << name;
      for (const auto& [name, bytes] : after) {
        const auto before = task.before.find(name);
        const bool is_old = before != task.before.end() && bytes == before->second;
        EXPECT_TRUE(is_old || bytes == task.done.at(name))
            << task.name << ", call " << ordinal << ", " << name;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Signals, KillTest, testing::Values(SIGKILL));

std::string LargeScript() {
  std::ostringstream script;
  script << "[PROPERTY]\n";
  for (int i = 0; i < 20000; ++i) script << "Property" << i << " = some text " << i << '\n';
  return script.str();
}

// Without a supervisor, and while the library works.
TEST(RandomInterruptsTest, LeaveAllOrNothing) {
  constexpr unsigned kSeed = 20;
  constexpr int kRounds = 50;
  const Arguments arguments = {"compile", "board.rux", "-g", "board.metad"};
  const Contents before = {
      {"board.meta", "older"}, {"board.metad", "older still"}, {"board.rux", LargeScript()}};
  const Contents done = Done(before, arguments);
  const TempFolder folder;
  std::mt19937 random(kSeed);
  for (int round = 0; round < kRounds; ++round) {
    Fill(folder, before);
    RuxProcess process(folder.path(), arguments);
    usleep(static_cast<useconds_t>(random() % 60000));
    kill(process.id(), SIGINT);
    const Ended ended = process.Wait();
    const Contents after = ContentsOf(folder);
    const bool is_done = after == done;
    EXPECT_TRUE(is_done || after == before) << "round " << round;
    EXPECT_TRUE(ended.signal == SIGINT || (ended.exit_status == 0 && is_done)) << "round " << round;
  }
}

}  // namespace
