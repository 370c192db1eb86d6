#include "tool/compiled/whole_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>

#include "tool/failure.h"

namespace rux {
namespace {

constexpr std::size_t kMostBytes = std::size_t{256} << 20;

class Descriptor {
 public:
  explicit Descriptor(const std::string& path) : number_(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
    if (number_ < 0) throw SystemFailure("cannot load", path);
  }
  ~Descriptor() { close(number_); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number() const { return number_; }

 private:
  const int number_;
};

}  // namespace

std::string ReadWholeFile(const std::string& path) {
  const Descriptor file(path);
  std::string bytes;
  std::array<char, 65536> piece;
  while (true) {
    const ssize_t size = read(file.number(), piece.data(), piece.size());
    if (size == 0) return bytes;
    if (size < 0 && errno == EINTR) continue;
    if (size < 0) throw SystemFailure("cannot load", path);
    bytes.append(piece.data(), static_cast<std::size_t>(size));
    if (bytes.size() > kMostBytes) {
      throw Failure(ExitStatus::kTrouble, "cannot load " + path + ": it has more than 256 MiB");
    }
  }
}

}  // namespace rux
