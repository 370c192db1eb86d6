// Every system call that fails, one after the other: full disks, quotas, broken disks, lost rights.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ostream>
#include <set>
#include <vector>

#include "tests/tool/faults/supervised_run.h"
#include "tests/tool/faults/verdict.h"

namespace {

std::vector<int> ErrorsOf(Call call) {
  switch (call) {
    case Call::kAccess:
      return {EROFS};
    case Call::kChangeMode:
      return {EPERM};
    case Call::kLink:
      return {EPERM, ENOSPC};
    case Call::kMakeMemoryFile:
      return {ENFILE};
    case Call::kMemory:
      return {};  // a test of its own
    case Call::kOpen:
      return {EMFILE, EACCES};
    case Call::kSynchronize:
      return {EIO, EDQUOT};
    case Call::kWrite:
      return {ENOSPC, EIO};
    default:
      return {EIO};
  }
}

// Whether a run cannot be done without the call: others are made for messages, or have a stand-in.
bool IsNeeded(Call call) {
  return call == Call::kChangeMode || call == Call::kMakeMemoryFile || call == Call::kRename ||
         call == Call::kSynchronize || call == Call::kWrite;
}

// Whether it looks if something is there at all. Of all such calls, the one for /proc is the only.
bool LooksForProc(const CallMade& made) {
  const bool names_folder = static_cast<int>(made.arguments[0]) == AT_FDCWD;
  return made.call == Call::kAccess && made.arguments[names_folder ? 2 : 1] == F_OK;
}

// File systems differ in what they can do.
struct FileSystem {
  const char* name;
  bool has_nameless_files;
  bool has_links;
  bool has_proc;

  std::vector<Task> Tasks() const {
    return has_nameless_files && has_links && has_proc ? ::Tasks() : LongestTask();
  }

  int Refuses(const CallMade& made) const {
    if (!has_proc && LooksForProc(made)) return ENOENT;
    const bool is_nameless =
        made.call == Call::kOpen && (made.arguments[2] & O_TMPFILE) == O_TMPFILE;
    if (!has_nameless_files && is_nameless) return EOPNOTSUPP;
    if (!has_links && made.call == Call::kLink) return EPERM;
    return 0;
  }
};

constexpr FileSystem kFileSystems[] = {
    {"WithEverything", true, true, true},
    {"WithoutNamelessFiles", false, true, true},
    {"WithoutLinks", false, false, true},
    {"WithoutProc", true, true, false},
};

class FailingCallsTest : public testing::Test {
 protected:
  void SetUp() override {
    if (const char* reason = WhyNotSupervised()) GTEST_SKIP() << reason;
  }

  TempFolder folder_;
};

class FailingCallsOnTest : public FailingCallsTest, public testing::WithParamInterface<FileSystem> {
 protected:
  // The calls of a task that only the file system refuses, which is no reason to fail.
  std::vector<CallMade> CallsOf(const Task& task) {
    std::vector<CallMade> calls;
    Fill(folder_, task.before);
    const auto ended =
        RunSupervised(folder_.path(), task.arguments, [&](const CallMade& made, pid_t) {
          calls.push_back(made);
          return GetParam().Refuses(made);
        });
    EXPECT_EQ(ended->exit_status, 0) << ended->errors;
    EXPECT_EQ(ContentsOf(folder_), task.done);
    return calls;
  }

  Ended RunWithFailing(const Task& task, std::size_t ordinal, int error) {
    Fill(folder_, task.before);
    return *RunSupervised(folder_.path(), task.arguments, [&](const CallMade& made, pid_t) {
      return made.ordinal == ordinal ? error : GetParam().Refuses(made);
    });
  }

  // What is left, less what cannot be helped: a name that cannot be taken away any more and,
  // without links, the first of two files when the second one does not get its name.
  Contents After(const Task& task, const Ended& ended, const CallMade& failed) const {
    Contents after = ContentsOf(folder_);
    if (failed.call == Call::kUnlink) DropTemporaryNames(after);
    if (failed.call == Call::kRename && !GetParam().has_links && ended.exit_status == 3) {
      for (auto& [name, bytes] : after) {
        const auto before = task.before.find(name);
        if (before != task.before.end() && bytes == task.done.at(name)) bytes = before->second;
      }
    }
    return after;
  }
};

TEST_P(FailingCallsOnTest, EachEndsInAReasonAndChangesNothing) {
  for (const Task& task : GetParam().Tasks()) {
    const std::vector<CallMade> calls = CallsOf(task);
    EXPECT_GT(calls.size(), 20u);
    for (const CallMade& call : calls) {
      for (const int error : ErrorsOf(call.call)) {
        const Ended ended = RunWithFailing(task, call.ordinal, error);
        std::string wrong = WrongEnd(task, ended, After(task, ended, call));
        // A reason that cannot be written is missing.
        const bool is_reason = call.call == Call::kWrite && call.arguments[0] == STDERR_FILENO;
        if (is_reason && wrong == "no reason is given") wrong.clear();
        if (IsNeeded(call.call) && ended.exit_status == 0) wrong = "this cannot be done";
        EXPECT_EQ(wrong, "") << task.name << ", call " << call.ordinal << " (" << NameOf(call.call)
                             << "): " << std::strerror(error) << "\nexit status "
                             << ended.exit_status << ", signal " << ended.signal << '\n'
                             << ended.errors;
      }
    }
  }
}

TEST_P(FailingCallsOnTest, InterruptedReadingAndWritingGoesOn) {
  for (const Task& task : GetParam().Tasks()) {
    for (const CallMade& call : CallsOf(task)) {
      if (call.call != Call::kRead && call.call != Call::kWrite) continue;
      const Ended ended = RunWithFailing(task, call.ordinal, EINTR);
      EXPECT_EQ(ended.exit_status, 0) << task.name << ", call " << call.ordinal << ended.errors;
      EXPECT_EQ(ContentsOf(folder_), task.done);
    }
  }
}

TEST_F(FailingCallsTest, NobodyElseCanOpenWhatIsToReplaceAFile) {
  for (const Task& task : LongestTask()) {
    std::set<std::uint64_t> modes;
    Fill(folder_, task.before);
    const auto ended =
        RunSupervised(folder_.path(), task.arguments, [&](const CallMade& made, pid_t) {
          const std::uint64_t flags = made.arguments[2];
          if (made.call != Call::kOpen) return 0;
          if ((flags & O_TMPFILE) == O_TMPFILE) return EOPNOTSUPP;
          if ((flags & O_EXCL) != 0) modes.insert(made.arguments[3]);
          return 0;
        });
    EXPECT_EQ(ended->exit_status, 0) << ended->errors;
    EXPECT_EQ(modes, std::set<std::uint64_t>{0600});
  }
}

// Of the C library, every piece of memory is asked for by itself, so that each can be refused.
constexpr char kPieceByPiece[] =
    "glibc.malloc.mmap_threshold=1:glibc.malloc.mmap_max=1000000000:glibc.malloc.tcache_count=0";

TEST_F(FailingCallsTest, MemoryThatRunsOutAtAnyTimeIsReported) {
  setenv("GLIBC_TUNABLES", kPieceByPiece, 1);
  for (const Task& task : Tasks()) {
    constexpr std::size_t kStep = 53;
    std::size_t first = 0;
    for (bool has_enough = false; !has_enough; first += kStep) {
      has_enough = true;
      Fill(folder_, task.before);
      const auto refuse = [&](const CallMade& made, pid_t) {
        if (made.ordinal < first) return 0;
        has_enough = false;
        return ENOMEM;
      };
      const Ended ended =
          *RunSupervised(folder_.path(), task.arguments, refuse, Supervised::kMemory);
      EXPECT_EQ(WrongEnd(task, ended, ContentsOf(folder_)), "")
          << task.name << ", from request " << first << "\nexit status " << ended.exit_status
          << ", signal " << ended.signal << '\n'
          << ended.errors;
    }
    EXPECT_GT(first, 500u);
  }
  unsetenv("GLIBC_TUNABLES");
}

void PrintTo(const FileSystem& system, std::ostream* stream) { *stream << system.name; }

INSTANTIATE_TEST_SUITE_P(FileSystems, FailingCallsOnTest, testing::ValuesIn(kFileSystems),
                         testing::PrintToStringParamName());

}  // namespace
