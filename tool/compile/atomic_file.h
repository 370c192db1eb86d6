// Writing a file whole or not at all.
#ifndef TOOL_COMPILE_ATOMIC_FILE_H_
#define TOOL_COMPILE_ATOMIC_FILE_H_

#include <string>

namespace rux {

// Something else writes to temporary_path(), Commit() then puts that under the wanted name.
//
// The temporary file stands beside the wanted one and takes its place by renaming, with the mode of
// the file that it replaces. When the wanted name is a symbolic link, the file that it points to is
// replaced. What is no regular file (a device, a pipe) is not replaced: the temporary file then
// stands in the system's folder for such files and its bytes are copied.
class AtomicFile {
 public:
  // Makes the temporary file. Throws a Failure when it cannot, or when `path` is a folder.
  explicit AtomicFile(const std::string& path);
  // Without Commit(), nothing is left but what stood at the wanted name before.
  ~AtomicFile();
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  const std::string& temporary_path() const { return temporary_path_; }

  // Sees to it that the bytes get where they are to be, all but the renaming; Commit() does it
  // otherwise. To put several files in place together, finish all of them first. Throws a Failure
  // when the bytes do not get to the disk.
  void Finish();

  // Throws a Failure like Finish(), and when the file cannot be put in place.
  void Commit();

  // The Failure for a writer that did not finish, with the system's reason for it where it can
  // still be found out.
  [[noreturn]] void ThrowIncomplete();

 private:
  void CreateTemporary();
  void Replace();
  void Copy();
  void Synchronize();

  const std::string path_;   // as asked for
  std::string target_path_;  // where the symbolic links lead to
  bool copies_ = false;      // into something that cannot be replaced
  bool finished_ = false;
  unsigned int mode_ = 0;  // of the file in place
  std::string temporary_path_;
  int temporary_ = -1;  // open for reading and writing
};

}  // namespace rux

#endif  // TOOL_COMPILE_ATOMIC_FILE_H_
