// A file read into memory as a whole.
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

  std::optional<Fault> Read(std::string& bytes) {
    struct stat status {};
    if (std::optional<Fault> fault = Open(status)) return fault;
    if (static_cast<unsigned long long>(status.st_size) > kMostFileBytes) {
      return FaultOf(ReasonText("it has more than {} MiB", {kMostFileBytes >> 20}));
    }
    // One byte more than the file had shows that it grows.
    std::string content(static_cast<std::size_t>(status.st_size) + 1, '\0');
    std::size_t size = 0;
    while (size < content.size()) {
      const ssize_t read_now = read(number_, &content[size], content.size() - size);
      if (read_now == 0) break;
      if (read_now > 0) {
        size += static_cast<std::size_t>(read_now);
      } else if (errno != EINTR) {
        return SystemFault("it cannot be read: ");
      }
    }
    if (size == content.size()) return FaultOf("it grows while it is read");
    content.resize(size);
    bytes = std::move(content);
    return std::nullopt;
  }

 private:
  // What is not a regular file is not opened: a pipe would be waited for, and a device may start to
  // work. Should one take the place of the file meanwhile, opening it does not wait.
  std::optional<Fault> Open(struct stat& status) {
    if (stat(path_, &status) != 0) return SystemFault("it cannot be opened: ");
    if (!S_ISREG(status.st_mode)) return FaultOf("it is not a regular file");
    number_ = open(path_, O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (number_ < 0 || fstat(number_, &status) != 0) return SystemFault("it cannot be opened: ");
    if (!S_ISREG(status.st_mode)) return FaultOf("it is not a regular file");
    return std::nullopt;
  }

  static Fault FaultOf(std::string reason) { return {0, "file", "path", std::move(reason)}; }
  static Fault SystemFault(const char* failure) {
    return FaultOf(failure + std::generic_category().message(errno));
  }

  const char* const path_;
  int number_ = -1;
};

// Why the file cannot be read; none when `bytes` are its content.
inline std::optional<Fault> ReadWholeFile(const std::string& path, std::string& bytes) {
  return WholeFile(path.c_str()).Read(bytes);
}

}  // namespace ruxcomp::file

#endif  // RUXCOMP_FILE_WHOLE_FILE_H_
