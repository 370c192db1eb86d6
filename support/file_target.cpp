#include "support/file_target.h"

#include <sys/stat.h>
#include <sys/types.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <string>
#include <system_error>

#include "support/failure.h"

namespace rux::support {
namespace {

constexpr char kListName[] = "system.posix_acl_access";

// Empty for a file without a list, and on a file system without lists.
std::string ListOf(const std::string& path) {
  const ssize_t size = getxattr(path.c_str(), kListName, nullptr, 0);
  if (size <= 0) return {};
  std::string list(static_cast<std::size_t>(size), '\0');
  const ssize_t read = getxattr(path.c_str(), kListName, list.data(), list.size());
  list.resize(read > 0 ? static_cast<std::size_t>(read) : 0);
  return list;
}

// For an owner or a group that is to stay.
constexpr auto kSame = static_cast<unsigned int>(-1);

// Takes away the list that a new file may have got from its folder.
bool DropList(int file) {
  return fremovexattr(file, kListName) == 0 || errno == ENODATA || errno == EOPNOTSUPP;
}

// The permissions, the group's less what others do not have.
mode_t WithoutGroup(mode_t permissions) { return permissions & ~((~permissions & S_IRWXO) << 3); }

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

FileRights::FileRights(const std::string& path, const struct stat& status)
    : owner_(status.st_uid),
      group_(status.st_gid),
      permissions_(status.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO)),
      list_(ListOf(path)) {}

bool FileRights::GiveTo(int file) const {
  struct stat status;
  if (fstat(file, &status) != 0) return false;
  const bool keeps_group = status.st_gid == group_ || fchown(file, kSame, group_) == 0;
  if (!GivePermissions(file, keeps_group)) return false;
  // Last of all: the permissions of another user's file may be out of reach. A process that may
  // not give files away keeps this one.
  return status.st_uid == owner_ || fchown(file, owner_, kSame) == 0 || errno == EPERM ||
         errno == EINVAL;
}

bool FileRights::GivePermissions(int file, bool keeps_group) const {
  // The list has the permissions in it.
  if (keeps_group && !list_.empty() && SetList(file)) return true;
  const bool says_all = DropList(file) && keeps_group && list_.empty();
  return fchmod(file, says_all ? permissions_ : WithoutGroup(permissions_)) == 0;
}

bool FileRights::SetList(int file) const {
  return fsetxattr(file, kListName, list_.data(), list_.size(), 0) == 0;
}

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
