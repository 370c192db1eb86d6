// A file as a whole: read into memory, or mapped.
#ifndef RUXCOMP_FILE_WHOLE_FILE_H_
#define RUXCOMP_FILE_WHOLE_FILE_H_

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "ruxcomp/file/fault.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/file/kept_bytes.h"
#include "ruxcomp/file/uninterrupted.h"

namespace ruxcomp::file {

// See ReadWholeFile.
class WholeFile {
 public:
  explicit WholeFile(const char* path) : path_(path) {}
  ~WholeFile() {
    if (number_ >= 0) close(number_);
  }
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  // One of these, once.
  std::optional<Fault> Read(std::string& bytes) {
    std::optional<Fault> fault = Open();
    return fault ? fault : ReadOpen(bytes);
  }
  std::optional<Fault> ReadInto(KeptBytes& bytes) {
    std::optional<Fault> fault = Open();
    return fault ? fault : KeepOpen(bytes);
  }
  // Maps a large file, and reads a small one.
  std::optional<Fault> Map(KeptBytes& bytes) {
    if (std::optional<Fault> fault = Open()) return fault;
    if (size_ >= kLeastMapped && bytes.Map(number_, size_)) return std::nullopt;
    return KeepOpen(bytes);
  }

 private:
  // What is not a regular file is not opened: a pipe would be waited for, and a device may start to
  // work. Should one take the place of the file meanwhile, opening it does not wait.
  std::optional<Fault> Open() {
    struct stat status {};
    if (stat(path_, &status) != 0) return SystemFault("it cannot be opened: ");
    if (!S_ISREG(status.st_mode)) return UnreadableFile("it is not a regular file");
    number_ =
        Uninterrupted([&] { return open(path_, O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK); });
    if (number_ < 0 || fstat(number_, &status) != 0) return SystemFault("it cannot be opened: ");
    if (!S_ISREG(status.st_mode)) return UnreadableFile("it is not a regular file");
    if (static_cast<unsigned long long>(status.st_size) > kMostFileBytes) {
      return UnreadableFile(ReasonText("it is larger than {} MiB", {kMostFileBytes >> 20}));
    }
    size_ = static_cast<std::size_t>(status.st_size);
    return std::nullopt;
  }

  std::optional<Fault> ReadOpen(std::string& bytes) {
    // One byte more than the file had shows that it grows.
    std::string content(size_ + 1, '\0');
    std::size_t size = 0;
    while (size < content.size()) {
      const ssize_t read_now =
          Uninterrupted([&] { return read(number_, &content[size], content.size() - size); });
      if (read_now < 0) return SystemFault("it cannot be read: ");
      if (read_now == 0) break;
      size += static_cast<std::size_t>(read_now);
    }
    if (size == content.size()) return UnreadableFile("it grew while it was read");
    content.resize(size);
    bytes = std::move(content);
    return std::nullopt;
  }

  std::optional<Fault> KeepOpen(KeptBytes& bytes) {
    std::string content;
    if (std::optional<Fault> fault = ReadOpen(content)) return fault;
    bytes.Keep(std::move(content));
    return std::nullopt;
  }

  static Fault SystemFault(const char* failure) {
    return UnreadableFile(failure + std::generic_category().message(errno));
  }

  const char* const path_;
  int number_ = -1;
  std::size_t size_ = 0;
};

// Why the file cannot be read; none when `bytes` are its content.
inline std::optional<Fault> ReadWholeFile(const std::string& path, std::string& bytes) {
  return WholeFile(path.c_str()).Read(bytes);
}

}  // namespace ruxcomp::file

#endif  // RUXCOMP_FILE_WHOLE_FILE_H_
