// Files that are open by their number.
#ifndef SUPPORT_DESCRIPTOR_H_
#define SUPPORT_DESCRIPTOR_H_

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace rux::support {

// Owns an open file. -1: none. Header-only, for the reader plug-in has nothing else of this room.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  // The reason for which a function gives up stays in errno.
  ~Descriptor() {
    const int error = errno;
    Close();
    errno = error;
  }
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }

  int number() const { return number_; }
  bool is_open() const { return number_ >= 0; }

  // False when the system reports only now, in errno, that something was not written. The file is
  // closed either way.
  bool Close() {
    if (!is_open()) return true;
    // An interrupted close has closed the file all the same.
    return close(std::exchange(number_, -1)) == 0 || errno == EINTR;
  }

 private:
  int number_;
};

// The path under which this process can open the file once more; empty where the system shows none,
// as without a /proc.
std::string PathOf(const Descriptor& file);

// Each goes on over interruptions, and waits for what is not there yet. WriteAll() and ReadAll() do
// all that they are asked for, in as many steps as it takes, or answer false with the reason in
// errno.
bool WriteAll(int file, std::string_view bytes);
// What comes next, `most` bytes at most: how many there are, 0 at the end, -1 with the reason in
// errno.
ssize_t ReadPiece(int file, char* bytes, std::size_t most);
// Appends what is left of the file. One that has more than `most` bytes is read no further than one
// byte beyond.
bool ReadAll(int file, std::size_t most, std::string& bytes);

}  // namespace rux::support

#endif  // SUPPORT_DESCRIPTOR_H_
