#include "support/file_target.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>

#include "support/failure.h"

namespace rux::support {
namespace {

namespace fs = std::filesystem;

// The path that a chain of symbolic links ends at, which need not exist. Sets `error`.
std::string FollowLinks(const std::string& path, std::error_code& error) {
  constexpr int kMostLinks = 40;  // as many as the system follows
  fs::path target = path;
  for (int links = 0; fs::is_symlink(fs::symlink_status(target, error)); ++links) {
    const fs::path next = fs::read_symlink(target, error);
    if (links == kMostLinks) error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
    if (error) break;
    target = target.parent_path() / next;
  }
  if (error == std::errc::no_such_file_or_directory) error.clear();
  return target.string();
}

bool IsSameFile(const std::string& path, const struct stat& status) {
  struct stat other;
  return stat(path.c_str(), &other) == 0 && other.st_dev == status.st_dev &&
         other.st_ino == status.st_ino;
}

}  // namespace

FileTarget::FileTarget(const std::string& path_asked_for) : path(path_asked_for), place(path) {
  struct stat status;
  const bool exists = stat(path.c_str(), &status) == 0;
  if (!exists && errno != ENOENT) throw CannotWrite();
  if (exists) {
    if (S_ISDIR(status.st_mode)) throw CannotWrite(EISDIR);
    if (access(path.c_str(), W_OK) != 0) throw CannotWrite();
    is_file = S_ISREG(status.st_mode);
    if (!is_file) return;
    rights.emplace(path, status);
  }
  std::error_code error;
  place = FollowLinks(path, error);
  if (error) throw CannotWrite(error.value());
  // Links of the system's own (/dev/stdout) may not report the true name of an open file.
  if (exists) is_file = IsSameFile(place, status);
}

Failure FileTarget::CannotWrite(int error) const {
  return SystemFailure("cannot write", path, error);
}

}  // namespace rux::support
