// Whose a file is, and who may do what with it.
#ifndef SUPPORT_FILE_RIGHTS_H_
#define SUPPORT_FILE_RIGHTS_H_

#include <sys/stat.h>
#include <sys/types.h>

#include <string>

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

}  // namespace rux::support

#endif  // SUPPORT_FILE_RIGHTS_H_
