// Script files, from the inside: what needs a small limit or an interrupted reader.
#include "reader/script_file.h"

#include <pthread.h>
#include <signal.h>
#include <sys/stat.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "tests/reader/temp_folder.h"

namespace {

using ruxcomp::reader::ScriptFile;

// The value of the one item in the script's one section.
std::string OnlyValue(ScriptFile* file) {
  file->Parse();
  const auto& sections = file->script()->sections();
  if (sections.size() != 1 || sections[0].item_count != 1) return "not one item";
  return std::string(sections[0].items[0].value);
}

// "[A]\nK=" and a value to make up `size` bytes.
std::string ScriptOfSize(std::size_t size) { return "[A]\nK=" + std::string(size - 6, 'v'); }

TEST(ScriptFileTest, AFileAtTheLimitIsRead) {
  const TempFolder folder;
  const auto file = ScriptFile::Open(folder.Write("a.rux", ScriptOfSize(100)), 100);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(OnlyValue(file.get()), std::string(94, 'v'));
}

TEST(ScriptFileTest, AFileAboveTheLimitIsRefused) {
  const TempFolder folder;
  EXPECT_EQ(ScriptFile::Open(folder.Write("a.rux", ScriptOfSize(101)), 100), nullptr);
}

// The size of what comes through a pipe is not known beforehand.
class PipeTest : public testing::TestWithParam<std::size_t> {};

TEST_P(PipeTest, IsReadUpToTheLimit) {
  const TempFolder folder;
  const std::string path = folder / "pipe";
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  signal(SIGPIPE, SIG_IGN);  // the reader leaves early when the script is too large
  const std::size_t limit = GetParam();
  for (const std::size_t size : {limit, limit + 1}) {
    std::thread writer([&] { std::ofstream(path, std::ios::binary) << ScriptOfSize(size); });
    const auto file = ScriptFile::Open(path, limit, ScriptFile::Streams::kAny);
    writer.join();
    ASSERT_EQ(file != nullptr, size == limit);
    if (file != nullptr) {
      EXPECT_EQ(OnlyValue(file.get()).size(), limit - 6);
    }
  }
}

// Below, at and above the size of the first read, and with several growths.
INSTANTIATE_TEST_SUITE_P(Limits, PipeTest,
                         testing::Values(10, 65535, 65536, 65537, 131073, 1000000),
                         testing::PrintToStringParamName());

void DoNothing(int) {}

// Signals hit the reader while it waits for the pipe to be opened and for its text.
TEST(ScriptFileTest, ASignalDoesNotEndTheReading) {
  struct sigaction action = {};
  action.sa_handler = DoNothing;  // without SA_RESTART: system calls return early
  ASSERT_EQ(sigaction(SIGUSR1, &action, nullptr), 0);
  const TempFolder folder;
  const std::string path = folder / "pipe";
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  const pthread_t reading_thread = pthread_self();
  std::thread writer([&] {
    const auto disturb = [&] {
      for (int i = 0; i < 10; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        pthread_kill(reading_thread, SIGUSR1);
      }
    };
    disturb();
    std::ofstream stream(path, std::ios::binary);
    stream << "[A]\nK=first" << std::flush;
    disturb();
    stream << "second" << std::flush;
    disturb();
  });
  const auto file =
      ScriptFile::Open(path, ruxcomp::reader::kLargestScript, ScriptFile::Streams::kAny);
  writer.join();
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(OnlyValue(file.get()), "firstsecond");
}

}  // namespace
