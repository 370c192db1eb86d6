#include "backend/file_io.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

#include "ruxcomp/file/uninterrupted.h"
#include "ruxcomp/language/words.h"

namespace ruxcomp::core {

using ruxcomp::file::Uninterrupted;
using ruxcomp::language::LoadWord;

namespace {

// The words that are stored from an address on.
class StoredWord {
 public:
  using iterator_category = std::forward_iterator_tag;
  using value_type = std::uint32_t;
  using difference_type = std::ptrdiff_t;
  using pointer = void;
  using reference = std::uint32_t;

  explicit StoredWord(const char* at) : at_(at) {}
  std::uint32_t operator*() const { return LoadWord(at_); }
  StoredWord& operator++() {
    at_ += sizeof(std::uint32_t);
    return *this;
  }
  bool operator==(StoredWord other) const { return at_ == other.at_; }
  bool operator!=(StoredWord other) const { return at_ != other.at_; }

 private:
  const char* at_;
};

// The descriptor of a regular file; negative when it cannot be opened or the path leads to anything
// else. Opening does not wait, even when something else takes the place of the file meanwhile.
int OpenRegular(const char* path) {
  struct stat status;
  if (stat(path, &status) != 0 || !S_ISREG(status.st_mode)) return -1;
  return Uninterrupted([&] { return open(path, O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK); });
}

}  // namespace

FileReader::FileReader(const std::string& path) : file_(OpenRegular(path.c_str())) {
  struct stat status;
  if (!opened() || fstat(file_, &status) != 0) return;
  // The file of a system's memory has a size that means nothing; it reads as empty.
  constexpr std::int64_t kLargest = std::int64_t{1} << 40;
  if (status.st_size > 0 && status.st_size < kLargest) {
    size_ = static_cast<std::size_t>(status.st_size);
  }
}

FileReader::~FileReader() {
  if (opened()) close(file_);
}

void FileReader::Seek(std::size_t offset) {
  next_ = end_ = buffer_.data();
  buffered_to_ = offset;
}

// A file that shrank, or cannot be read further, ends there.
bool FileReader::Fill() {
  const std::size_t most = std::min(buffer_.size(), Remaining());
  const ssize_t count = Uninterrupted(
      [&] { return pread(file_, buffer_.data(), most, static_cast<off_t>(buffered_to_)); });
  next_ = buffer_.data();
  end_ = next_ + std::max(count, ssize_t{0});
  buffered_to_ += Buffered();
  return Buffered() > 0;
}

std::size_t FileReader::Read(char* to, std::size_t size) {
  std::size_t read = 0;
  while (read < size && (Buffered() > 0 || Fill())) {
    const std::size_t step = std::min(size - read, Buffered());
    std::copy_n(next_, step, to + read);
    read += step;
    next_ += step;
  }
  return read;
}

bool FileReader::Bytes(void* to, std::size_t size) {
  return size <= Remaining() && Read(static_cast<char*>(to), size) == size;
}

bool FileReader::WordAcross(std::uint32_t& word) {
  unsigned char bytes[sizeof word];
  if (!Bytes(bytes, sizeof bytes)) return false;
  word = LoadWord(bytes);
  return true;
}

bool FileReader::Words(std::vector<std::uint32_t>& words, std::size_t count) {
  const std::size_t length = count * sizeof(std::uint32_t);
  if (length <= Buffered()) {
    words.assign(StoredWord(next_), StoredWord(next_ + length));
    next_ += length;
    return true;
  }
  words.resize(count);
  return std::all_of(words.begin(), words.end(),
                     [this](std::uint32_t& word) { return Word(word); });
}

bool FileReader::Text(std::string& text, std::size_t& size) {
  if (size > Remaining()) return false;
  while (size > 0) {
    if (Buffered() == 0 && !Fill()) return false;
    const std::size_t most = std::min(size, Buffered());
    const auto* zero = static_cast<const char*>(std::memchr(next_, '\0', most));
    const std::size_t length = zero ? static_cast<std::size_t>(zero - next_) : most;
    text.append(next_, length);
    const std::size_t passed = zero ? length + 1 : length;
    next_ += passed;
    size -= passed;
    if (zero) return true;
  }
  return true;
}

void FileReader::PaddedBytes(void* to, std::size_t size) {
  auto* out = static_cast<char*>(to);
  const std::size_t read = Read(out, std::min(size, Remaining()));
  std::fill(out + read, out + size, '\0');
  // Beyond the end, the position advances without bytes.
  if (read < size) Seek(buffered_to_ + (size - read));
}

}  // namespace ruxcomp::core
