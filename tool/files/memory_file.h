// A file in memory, for what can only write to a path.
#ifndef TOOL_FILES_MEMORY_FILE_H_
#define TOOL_FILES_MEMORY_FILE_H_

#include <string>

#include "tool/files/descriptor.h"

namespace rux {

// Nothing of it is on any disk, so that nothing is left of it however the process ends.
class MemoryFile {
 public:
  // `wanted`: the file that the bytes are for; failures name that one. Throws a Failure.
  explicit MemoryFile(const std::string& wanted);

  int number() const { return file_.number(); }

  // Under which this process can open the file.
  const std::string& path() const { return path_; }

  // All that was written. Throws a Failure.
  std::string Bytes() const;

  // The Failure for a writer that did not finish, with the system's reason for it where it can
  // still be found out.
  [[noreturn]] void ThrowIncomplete() const;

 private:
  const std::string wanted_;
  const Descriptor file_;
  const std::string path_;
};

}  // namespace rux

#endif  // TOOL_FILES_MEMORY_FILE_H_
