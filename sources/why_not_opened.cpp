#include "sources/why_not_opened.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "reader/script_file.h"
#include "support/descriptor.h"

namespace rux::sources {

std::string WhyNotOpened(const std::string& path) {
  const support::Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  struct stat status;
  if (!file.is_open() || fstat(file.number(), &status) != 0) return std::strerror(errno);
  if (S_ISDIR(status.st_mode)) return std::strerror(EISDIR);
  if (S_ISREG(status.st_mode)) {
    if (static_cast<std::size_t>(status.st_size) > reader::kLargestScript) {
      return std::strerror(EFBIG);
    }
    char byte;
    if (read(file.number(), &byte, 1) < 0) return std::strerror(errno);
  }
  return "the reader does not open it";
}

}  // namespace rux::sources
