#include "support/descriptor.h"

#include <poll.h>
#include <sys/poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <string>
#include <string_view>

namespace rux::support {
namespace {

// Whether the call that just failed is to be made once more. Of pipes that another process set not
// to block, it waits for what they block on.
bool IsWorthAnotherTry(int file, short awaited) {
  if (errno == EAGAIN) {
    pollfd ready = {file, awaited, 0};
    return poll(&ready, 1, -1) >= 0 || errno == EINTR;
  }
  return errno == EINTR;
}

}  // namespace

std::string PathOf(const Descriptor& file) {
  const std::string path = "/proc/self/fd/" + std::to_string(file.number());
  return access(path.c_str(), F_OK) == 0 ? path : "";
}

bool WriteAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(file, bytes.data(), bytes.size());
    if (written < 0) {
      if (!IsWorthAnotherTry(file, POLLOUT)) return false;
      continue;
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

ssize_t ReadPiece(int file, char* bytes, std::size_t most) {
  while (true) {
    const ssize_t count = read(file, bytes, most);
    if (count >= 0 || !IsWorthAnotherTry(file, POLLIN)) return count;
  }
}

bool ReadAll(int file, std::size_t most, std::string& bytes) {
  constexpr std::size_t kFirst = std::size_t{1} << 16;  // of a file that does not report its size
  struct stat status;
  const bool has_size = fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0;
  const std::size_t expected = has_size ? static_cast<std::size_t>(status.st_size) : kFirst;
  std::size_t used = bytes.size();
  const auto room_for = [&](std::size_t more) {
    bytes.resize(used + std::min(more, most + 1 - std::min(used, most)));
  };
  // One byte more than expected shows the end of the file without growing the text.
  room_for(expected + 1);
  ssize_t size = 1;
  while (used <= most && size != 0) {
    if (used == bytes.size()) room_for(used);
    size = ReadPiece(file, &bytes[used], bytes.size() - used);
    if (size < 0) break;
    used += static_cast<std::size_t>(size);
  }
  bytes.resize(used);
  return size >= 0;
}

}  // namespace rux::support
