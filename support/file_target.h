// Where a file is to be written.
#ifndef SUPPORT_FILE_TARGET_H_
#define SUPPORT_FILE_TARGET_H_

#include <optional>
#include <string>

#include "support/failure.h"
#include "support/file_rights.h"

namespace rux::support {

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
