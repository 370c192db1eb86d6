// Where a file is to be written, and the rights of the file that it replaces.
#ifndef SUPPORT_FILE_TARGET_H_
#define SUPPORT_FILE_TARGET_H_

#include <sys/stat.h>
#include <sys/types.h>

#include <optional>
#include <string>

#include "support/failure.h"

namespace rux::support {

// The owner, the group, the permissions and the access control list of a file that is replaced.
// Set-user-ID, set-group-ID and sticky bits are no part of it: nothing that is written here is a
// program.
class FileRights {
 public:
  FileRights(const std::string& path, const struct stat& status);

  // Gives them to a file that only its owner may open yet, as far as this process may do so.
  // No step gives more to any user than the replaced file did: when the group or the list is lost,
  // the group gets no more than everybody. False, with the reason in errno, when the permissions
  // cannot be set.
  bool GiveTo(int file) const;

 private:
  bool GivePermissions(int file, bool keeps_group) const;
  bool SetList(int file) const;

  uid_t owner_;
  gid_t group_;
  mode_t permissions_;
  std::string list_;  // as the system keeps it; empty: the permissions say all
};

struct FileTarget {
  // Looks at what is there. Throws a Failure when that is a folder or may not be written.
  explicit FileTarget(const std::string& path);

  Failure CannotWrite(int error = errno) const;

  std::string path;     // as asked for
  std::string place;    // where its symbolic links lead to
  bool is_file = true;  // or yet to be one; otherwise a device or pipe, which is never replaced
  std::optional<FileRights> rights;  // of the file that is there; none: there is no file
};

}  // namespace rux::support

#endif  // SUPPORT_FILE_TARGET_H_
