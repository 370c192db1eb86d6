#include "tool/compile/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include "tool/failure.h"

namespace rux {
namespace {

namespace fs = std::filesystem;

Failure CannotWrite(const std::string& path, int error = errno) {
  return SystemFailure("cannot write", path, error);
}

// The path that a chain of symbolic links ends at, which need not exist.
std::string FollowLinks(const std::string& path) {
  constexpr int kMostLinks = 40;  // as many as the system follows
  fs::path target = path;
  std::error_code error;
  for (int links = 0; fs::is_symlink(fs::symlink_status(target, error)); ++links) {
    if (links == kMostLinks) throw CannotWrite(path, ELOOP);
    target = target.parent_path() / fs::read_symlink(target, error);
    if (error) throw CannotWrite(path, error.value());
  }
  return target.string();
}

mode_t ModeOfNewFiles() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

bool IsSameFile(const std::string& path, const struct stat& status) {
  struct stat other;
  return stat(path.c_str(), &other) == 0 && other.st_dev == status.st_dev &&
         other.st_ino == status.st_ino;
}

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number() const { return number_; }
  int Close() { return close(std::exchange(number_, -1)); }

 private:
  int number_;
};

bool WriteAll(int file, const char* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t written = write(file, bytes, count);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    bytes += written;
    count -= static_cast<std::size_t>(written);
  }
  return true;
}

}  // namespace

AtomicFile::AtomicFile(const std::string& path) : path_(path), target_path_(path) {
  mode_ = ModeOfNewFiles();
  struct stat status;
  if (stat(path.c_str(), &status) == 0) {
    if (S_ISDIR(status.st_mode)) throw CannotWrite(path_, EISDIR);
    if (access(path.c_str(), W_OK) != 0) throw CannotWrite(path_);
    mode_ = status.st_mode & 07777;
    copies_ = !S_ISREG(status.st_mode);
    if (!copies_) target_path_ = FollowLinks(path);
    // Links of the system's own (/dev/stdout) may not tell the true name of an open file.
    copies_ = copies_ || !IsSameFile(target_path_, status);
  } else {
    if (errno != ENOENT) throw CannotWrite(path_);
    target_path_ = FollowLinks(path);
  }
  CreateTemporary();
}

AtomicFile::~AtomicFile() {
  if (temporary_ >= 0) close(temporary_);
  if (!temporary_path_.empty()) unlink(temporary_path_.c_str());
}

void AtomicFile::Finish() {
  if (std::exchange(finished_, true)) return;
  if (copies_) {
    Copy();
  } else {
    Synchronize();
  }
}

void AtomicFile::Commit() {
  Finish();
  if (!copies_) Replace();
}

void AtomicFile::ThrowIncomplete() {
  // The writer kept its reason to itself; the same happens again to one more block of bytes.
  const std::array<char, 4096> block{};
  const bool at_end = lseek(temporary_, 0, SEEK_END) >= 0;
  if (at_end && (!WriteAll(temporary_, block.data(), block.size()) || fsync(temporary_) != 0)) {
    throw CannotWrite(path_);
  }
  throw Failure(ExitStatus::kTrouble, "cannot write " + path_ + ": it was not written completely");
}

void AtomicFile::CreateTemporary() {
  std::error_code error;
  const fs::path folder =
      copies_ ? fs::temp_directory_path(error) : fs::path(target_path_).parent_path();
  if (error) throw CannotWrite(path_, error.value());
  std::string name = (folder / ".rux-XXXXXX").string();
  temporary_ = mkostemp(name.data(), O_CLOEXEC);
  if (temporary_ < 0) throw CannotWrite(path_);
  temporary_path_ = name;
}

void AtomicFile::Replace() {
  if (close(std::exchange(temporary_, -1)) != 0) throw CannotWrite(path_);
  if (std::rename(temporary_path_.c_str(), target_path_.c_str()) != 0) throw CannotWrite(path_);
  temporary_path_.clear();
}

void AtomicFile::Copy() {
  Descriptor target(open(path_.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC | O_NOCTTY));
  if (target.number() < 0 || lseek(temporary_, 0, SEEK_SET) < 0) throw CannotWrite(path_);
  std::array<char, 65536> buffer;
  while (true) {
    const ssize_t count = read(temporary_, buffer.data(), buffer.size());
    if (count == 0) break;
    if (count < 0 || !WriteAll(target.number(), buffer.data(), static_cast<std::size_t>(count))) {
      throw CannotWrite(path_);
    }
  }
  if (target.Close() != 0) throw CannotWrite(path_);
}

void AtomicFile::Synchronize() {
  if (fchmod(temporary_, mode_) != 0) throw CannotWrite(path_);
  // Some file systems have nothing to synchronize.
  if (fsync(temporary_) != 0 && errno != EINVAL) throw CannotWrite(path_);
}

}  // namespace rux
