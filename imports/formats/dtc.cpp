#include "imports/formats/dtc.h"

#include <signal.h>
#include <sys/poll.h>
#include <sys/resource.h>
#include <sys/types.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

#include "support/descriptor.h"
#include "support/failure.h"
#include "support/memory_file.h"
#include "support/program.h"

namespace rux::imports {
namespace {

using support::ExitStatus;

constexpr std::chrono::seconds kLongestRun{20};
constexpr rlim_t kMostMemory = rlim_t{1} << 30;
constexpr rlim_t kLargestTree = rlim_t{1} << 26;
constexpr std::size_t kMostMessages = std::size_t{1} << 16;

pid_t StartDtc(const std::string& folder, const support::ProgramStreams& streams) {
  const pid_t process =
      support::StartProgram({"dtc", "-q", "-I", "dts", "-O", "dtb", "-i", folder, "-"}, streams,
                            "dts files are compiled");
  for (const auto& [resource, most] :
       {std::pair(RLIMIT_AS, kMostMemory), std::pair(RLIMIT_FSIZE, kLargestTree)}) {
    const rlimit limit{most, most};
    prlimit(process, resource, &limit, nullptr);
  }
  return process;
}

// What the process writes until it ends; false when that takes too long.
bool ReadMessages(int pipe, std::string& messages) {
  const auto deadline = std::chrono::steady_clock::now() + kLongestRun;
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        deadline - std::chrono::steady_clock::now());
    if (left.count() <= 0) return false;
    pollfd waiting{pipe, POLLIN, 0};
    if (poll(&waiting, 1, static_cast<int>(left.count())) <= 0) continue;
    std::array<char, 4096> piece;
    const ssize_t count = support::ReadPiece(pipe, piece.data(), piece.size());
    if (count <= 0) return true;
    if (messages.size() < kMostMessages)
      messages.append(piece.data(), static_cast<std::size_t>(count));
  }
}

// On one line; dtc reads the text from its standard input.
std::string WithPath(std::string messages, const std::string& path) {
  constexpr std::string_view kItsName = "<stdin>";
  for (std::size_t at = 0; (at = messages.find(kItsName, at)) != std::string::npos;) {
    messages.replace(at, kItsName.size(), path);
    at += path.size();
  }
  while (!messages.empty() && messages.back() == '\n') messages.pop_back();
  for (std::size_t at = 0; (at = messages.find('\n', at)) != std::string::npos;)
    messages.replace(at, 1, "; ");
  return messages;
}

}  // namespace

std::string CompileDeviceTree(const std::string& path, std::string_view text) {
  support::MemoryFile input(path);
  if (!support::WriteAll(input.number(), text) || lseek(input.number(), 0, SEEK_SET) != 0)
    throw support::SystemFailure("cannot compile", path);
  support::MemoryFile output(path);
  support::Pipe messages = support::OpenPipe();
  const std::string folder = std::filesystem::path(path).parent_path().string();
  const pid_t process = StartDtc(folder.empty() ? "." : folder,
                                 {input.number(), output.number(), messages.write.number()});
  messages.write.Close();
  std::string reported;
  const bool is_done = ReadMessages(messages.read.number(), reported);
  if (!is_done) kill(process, SIGKILL);
  const int status = support::WaitForProgram(process);
  if (!is_done) throw support::Failure(ExitStatus::kTrouble, "{}: dtc takes too long", path);
  if (status != 0) {
    throw support::Failure(ExitStatus::kTrouble, "{}: dtc does not compile it: {}", path,
                           WithPath(reported, path));
  }
  return std::string(output.Bytes());
}

}  // namespace rux::imports
