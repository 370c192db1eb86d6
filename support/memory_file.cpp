#include "support/memory_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "support/descriptor.h"
#include "support/failure.h"
#include "support/temporary_name.h"

namespace rux::support {

MemoryFile::MemoryFile(const std::string& wanted)
    : wanted_(wanted), file_(memfd_create("rux", MFD_CLOEXEC)) {
  if (!file_.is_open()) throw SystemFailure("cannot write", wanted_);
}

MemoryFile::~MemoryFile() {
  if (!mapped_.empty()) munmap(const_cast<char*>(mapped_.data()), mapped_.size());
}

const std::string& MemoryFile::Path() {
  if (path_.empty()) path_ = PathOf(file_);
  if (path_.empty()) MoveToDisk();
  return path_;
}

void MemoryFile::AlwaysAppend() {
  if (fcntl(file_.number(), F_SETFL, O_APPEND) != 0) throw SystemFailure("cannot write", wanted_);
}

void MemoryFile::MoveToDisk() {
  constexpr mode_t kOwnerOnly = 0600;
  std::error_code error;
  const std::string folder = std::filesystem::temp_directory_path(error).string();
  if (error) {
    throw Failure(ExitStatus::kTrouble,
                  "cannot write {}: TMPDIR is not a folder for temporary files", wanted_);
  }
  on_disk_ = TemporaryName(folder, [&](const char* name) {
    file_ = Descriptor(open(name, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerOnly));
    return file_.is_open();
  });
  if (!file_.is_open()) {
    throw SystemFailure("cannot write " + wanted_ + ": cannot write into", folder);
  }
  path_ = on_disk_.text();
}

void MemoryFile::Overwrite(std::size_t offset, std::string_view bytes) {
  if (Size() < offset + bytes.size()) return;
  if (lseek(file_.number(), static_cast<off_t>(offset), SEEK_SET) < 0 ||
      !WriteAll(file_.number(), bytes)) {
    throw SystemFailure("cannot write", wanted_);
  }
}

std::string_view MemoryFile::Bytes() {
  const std::size_t size = Size();
  if (!mapped_.empty() || size == 0) return mapped_;
  void* bytes = mmap(nullptr, size, PROT_READ, MAP_SHARED | MAP_POPULATE, file_.number(), 0);
  if (bytes == MAP_FAILED) throw SystemFailure("cannot write", wanted_);
  mapped_ = {static_cast<const char*>(bytes), size};
  on_disk_ = TemporaryName();
  return mapped_;
}

std::size_t MemoryFile::Size() const {
  struct stat status;
  if (fstat(file_.number(), &status) != 0) throw SystemFailure("cannot write", wanted_);
  return static_cast<std::size_t>(status.st_size);
}

void MemoryFile::ThrowIncomplete() const {
  // The writer kept its reason to itself; the same happens again to another one.
  const Descriptor again(open(path_.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC));
  if (!again.is_open()) throw SystemFailure("cannot write " + wanted_ + ": cannot open", path_);
  if (!WriteAll(again.number(), std::string(4096, '\0'))) {
    throw SystemFailure("cannot write", wanted_);
  }
  throw Failure(ExitStatus::kTrouble, "cannot write {}: it was not written completely", wanted_);
}

}  // namespace rux::support
