#include "support/temporary_name.h"

#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>
#include <utility>

namespace rux::support {

TemporaryName::TemporaryName(const std::string& folder, const Make& make) {
  constexpr int kMostTries = 1000;  // names that killed processes of this number may have left
  // Each name of this process is another one: many may be there at a time.
  static std::atomic<unsigned> next{0};
  for (int i = 0; i < kMostTries; ++i) {
    const std::string name = ".rux-" + std::to_string(getpid()) + '-' + std::to_string(next++);
    std::string path = (std::filesystem::path(folder) / name).string();
    if (make(path.c_str())) {
      text_ = std::move(path);
      return;
    }
    if (errno != EEXIST) return;
  }
}

TemporaryName::~TemporaryName() {
  if (is_there()) unlink(text_.c_str());
}

TemporaryName::TemporaryName(TemporaryName&& other) noexcept { text_.swap(other.text_); }

TemporaryName& TemporaryName::operator=(TemporaryName&& other) noexcept {
  text_.swap(other.text_);
  return *this;
}

bool TemporaryName::RenameTo(const std::string& name) {
  if (std::rename(text_.c_str(), name.c_str()) != 0) return false;
  text_.clear();
  return true;
}

}  // namespace rux::support
