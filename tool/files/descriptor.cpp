#include "tool/files/descriptor.h"

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace rux {
namespace {

// Whether the call that just failed is to be made once more. Of pipes that somebody set not to
// block, it waits for what they block on.
bool IsWorthAnotherTry(int file, short awaited) {
  if (errno == EAGAIN) {
    pollfd ready = {file, awaited, 0};
    return poll(&ready, 1, -1) >= 0 || errno == EINTR;
  }
  return errno == EINTR;
}

}  // namespace

Descriptor::~Descriptor() { Close(); }

Descriptor::Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  std::swap(number_, other.number_);
  return *this;
}

bool Descriptor::Close() {
  if (!is_open()) return true;
  // An interrupted close has closed the file all the same.
  return close(std::exchange(number_, -1)) == 0 || errno == EINTR;
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

bool ReadAll(int file, std::size_t most, std::string& bytes) {
  struct stat status;
  // Growing would copy a large file several times.
  if (fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
    bytes.reserve(std::min(static_cast<std::size_t>(status.st_size), most));
  }
  std::array<char, 65536> piece;
  while (bytes.size() <= most) {
    const std::size_t wanted = std::min(piece.size(), most + 1 - bytes.size());
    const ssize_t size = read(file, piece.data(), wanted);
    if (size == 0) return true;
    if (size > 0) {
      bytes.append(piece.data(), static_cast<std::size_t>(size));
    } else if (!IsWorthAnotherTry(file, POLLIN)) {
      return false;
    }
  }
  return true;
}

}  // namespace rux
