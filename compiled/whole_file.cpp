#include "compiled/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstddef>

#include "compiled/limits.h"
#include "support/descriptor.h"
#include "support/failure.h"

namespace rux::compiled {
namespace {

// Most often right, never to be relied on.
std::size_t LikelySize(const support::Descriptor& file) {
  struct stat status;
  const bool is_file = fstat(file.number(), &status) == 0 && S_ISREG(status.st_mode);
  return is_file ? static_cast<std::size_t>(status.st_size) : 0;
}

}  // namespace

std::string ReadWholeFile(const std::string& path) {
  const support::Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file.is_open()) throw support::SystemFailure("cannot load", path);
  std::string bytes;
  bytes.reserve(std::min(LikelySize(file), kMostFileBytes));
  if (!support::ReadAll(file.number(), kMostFileBytes, bytes))
    throw support::SystemFailure("cannot load", path);
  if (bytes.size() > kMostFileBytes) {
    throw support::Failure(support::ExitStatus::kTrouble,
                           "cannot load " + path + ": it has more than 256 MiB");
  }
  return bytes;
}

}  // namespace rux::compiled
