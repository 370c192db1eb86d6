// rux with somebody who decides about each of its system calls.
#ifndef TESTS_TOOL_FAULTS_SUPERVISED_RUN_H_
#define TESTS_TOOL_FAULTS_SUPERVISED_RUN_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/tool/faults/rux_process.h"

// The calls that can be supervised: those that deal with files, and those that ask for memory.
enum class Call {
  kAccess,
  kChangeMode,
  kClose,
  kLink,
  kMakeMemoryFile,
  kMemory,
  kOpen,
  kRead,
  kReadLink,
  kRename,
  kSeek,
  kStatus,
  kSynchronize,
  kUnlink,
  kWrite,
};
const char* NameOf(Call call);

struct CallMade {
  Call call;
  std::size_t ordinal;  // of those supervised, since main() began
  std::uint64_t arguments[6];
};

enum class Supervised { kFiles, kMemory };

// What becomes of a call: it is made (0), or not made and fails with this error.
using Supervisor = std::function<int(const CallMade& made, pid_t process)>;

// Why rux cannot be supervised here; null: it can.
const char* WhyNotSupervised();

// Null when the system does not let a process supervise another one.
std::optional<Ended> RunSupervised(const std::filesystem::path& folder, const Arguments& arguments,
                                   const Supervisor& supervisor,
                                   Supervised supervised = Supervised::kFiles);

#endif  // TESTS_TOOL_FAULTS_SUPERVISED_RUN_H_
