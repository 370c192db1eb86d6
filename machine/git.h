// Files as they are in a revision of the git repository that the working folder is in.
#ifndef MACHINE_GIT_H_
#define MACHINE_GIT_H_

#include <sys/types.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "support/descriptor.h"

namespace rux::machine {

// One run of the git program, which answers as long as this lives.
class GitRevision {
 public:
  // Throws a Failure when git does not run or does not have the revision.
  explicit GitRevision(std::string revision);
  ~GitRevision();
  GitRevision(const GitRevision&) = delete;
  GitRevision& operator=(const GitRevision&) = delete;

  // The bytes of a file; none when the revision does not have it. The path is relative to the top
  // of the repository; symbolic links are followed within the revision. Throws a Failure when git
  // breaks off.
  std::optional<std::string> Read(const std::string& path);
  bool HasFolder(const std::string& path);
  // The paths of all files below a folder of the revision; none when it does not have the folder.
  std::vector<std::string> FilesBelow(const std::string& folder);

 private:
  struct Object {
    std::string type;  // "blob" of a file, "tree" of a folder
    std::string bytes;
    std::size_t hash_size;  // in bytes; 0 when git does not say
  };
  // What the revision with that appended is for git; none when it is nothing.
  std::optional<Object> Ask(const std::string& what);
  std::string Line();
  std::string Bytes(std::size_t count);
  [[noreturn]] void ThrowBroken() const;

  const std::string revision_;
  pid_t process_ = -1;
  support::Descriptor questions_;
  support::Descriptor answers_;
};

// The folder of the repository that the working folder is: "" at the top, or "boards/". Throws a
// Failure when it is in none.
std::string FolderInRepository();

// The path from the top of the repository of a file that is at `path` from that folder.
std::string PathInRepository(const std::string& folder, const std::string& path);

}  // namespace rux::machine

#endif  // MACHINE_GIT_H_
