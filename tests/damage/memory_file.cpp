#include "tests/damage/memory_file.h"

#include <sys/mman.h>
#include <unistd.h>

#include <stdexcept>

MemoryFile::MemoryFile()
    : descriptor_(memfd_create("damaged", MFD_CLOEXEC)),
      path_("/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(descriptor_)) {
  if (descriptor_ < 0) throw std::runtime_error("cannot make a file in memory");
}

MemoryFile::~MemoryFile() { close(descriptor_); }

void MemoryFile::Fill(const std::string& bytes) const {
  if (ftruncate(descriptor_, 0) != 0 ||
      pwrite(descriptor_, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
    throw std::runtime_error("cannot fill a file in memory");
  }
}
