// Folders in which a program lets the reader look for included files. The plug-in has none.
#ifndef READER_INCLUDE_FOLDERS_H_
#define READER_INCLUDE_FOLDERS_H_

#include <string>
#include <vector>

namespace ruxcomp::reader {

// An included file is looked for in these folders, in order, when it is not in the folder of the
// file that includes it. One at a time; without one there are no such folders.
class IncludeFolders {
 public:
  explicit IncludeFolders(const std::vector<std::string>& folders);
  ~IncludeFolders();
  IncludeFolders(const IncludeFolders&) = delete;
  IncludeFolders& operator=(const IncludeFolders&) = delete;

  static const std::vector<std::string>& Current();
};

}  // namespace ruxcomp::reader

#endif  // READER_INCLUDE_FOLDERS_H_
