// A file in memory, and for what can only write to a path.
#ifndef SUPPORT_MEMORY_FILE_H_
#define SUPPORT_MEMORY_FILE_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "support/descriptor.h"
#include "support/temporary_name.h"

namespace rux::support {

// Nothing of it is on any disk, so that nothing is left of it however the process ends. Only where
// the system shows no path for it (PathOf()), the one that is asked for is that of a file in the
// folder for temporary files.
class MemoryFile {
 public:
  // `wanted`: the file that the bytes are for; failures name that one. Throws a Failure.
  explicit MemoryFile(const std::string& wanted);
  ~MemoryFile();
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  int number() const { return file_.number(); }

  // Under which this process can open the file. To be asked for before anything is written.
  const std::string& Path();

  // From now on, each write goes to the end, also where several processes that share the file write
  // at the same time. Throws a Failure.
  void AlwaysAppend();

  // Puts other bytes in place of those at an offset. A file that ends before them stays
  // as it is. Throws a Failure.
  void Overwrite(std::size_t offset, std::string_view bytes);

  // All that was written, once that is done: they are looked at where they are, and valid as long
  // as this is. Throws a Failure.
  std::string_view Bytes();

  // The Failure for a writer that did not finish, with the system's reason for it where it can
  // still be found out.
  [[noreturn]] void ThrowIncomplete() const;

 private:
  std::size_t Size() const;

  void MoveToDisk();

  const std::string wanted_;
  Descriptor file_;
  TemporaryName on_disk_;
  std::string path_;
  std::string_view mapped_;
};

}  // namespace rux::support

#endif  // SUPPORT_MEMORY_FILE_H_
