#include "tool/files/memory_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <limits>

#include "tool/failure.h"

namespace rux {

MemoryFile::MemoryFile(const std::string& wanted)
    : wanted_(wanted),
      file_(memfd_create("rux", MFD_CLOEXEC)),
      path_("/proc/self/fd/" + std::to_string(file_.number())) {
  if (!file_.is_open()) throw SystemFailure("cannot write", wanted_);
}

std::string MemoryFile::Bytes() const {
  constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max() - 1;
  std::string bytes;
  if (lseek(file_.number(), 0, SEEK_SET) < 0 || !ReadAll(file_.number(), kAll, bytes)) {
    throw SystemFailure("cannot write", wanted_);
  }
  return bytes;
}

void MemoryFile::ThrowIncomplete() const {
  // The writer kept its reason to itself; the same happens again to another one.
  const Descriptor again(open(path_.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC));
  if (!again.is_open()) throw SystemFailure("cannot write " + wanted_ + ": cannot open", path_);
  if (!WriteAll(again.number(), std::string(4096, '\0'))) {
    throw SystemFailure("cannot write", wanted_);
  }
  throw Failure(ExitStatus::kTrouble,
                "cannot write " + wanted_ + ": it was not written completely");
}

}  // namespace rux
