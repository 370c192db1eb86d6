#include "driver/unchanged.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cstddef>

#include "compiled/file.h"  // IWYU pragma: keep
#include "ruxcomp/file/header.h"
#include "support/descriptor.h"
#include "support/placement.h"

namespace rux::driver {

bool HasSameContent(const support::NewFile& file, bool counts_time) {
  const support::Descriptor there(
      open(file.path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  struct stat status;
  if (!there.is_open() || fstat(there.number(), &status) != 0) return false;
  const bool may_be_same =
      S_ISREG(status.st_mode) && static_cast<std::size_t>(status.st_size) == file.bytes.size();
  std::string bytes;
  if (!may_be_same || !support::ReadAll(there.number(), file.bytes.size(), bytes)) return false;
  return bytes == file.bytes || (!counts_time && compiled::AreSameButForTime(bytes, file.bytes));
}

}  // namespace rux::driver
