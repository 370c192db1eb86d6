// Folders in which a program lets the reader look for included files. The plug-in has none.
#ifndef READER_INCLUDE_FOLDERS_H_
#define READER_INCLUDE_FOLDERS_H_

#include <functional>
#include <string>
#include <vector>

namespace ruxcomp::reader {

// An included file is looked for in these folders, in order, when it is not in the folder of the
// file that includes it. One at a time; without one there are no such folders.
class IncludeFolders {
 public:
  using Naming = std::function<std::string(const std::string& path)>;

  // `naming`: what a script that is found at a path in one of them is called; none: that path. Both
  // are paths as the library takes them.
  explicit IncludeFolders(const std::vector<std::string>& folders, Naming naming = nullptr);
  ~IncludeFolders();
  IncludeFolders(const IncludeFolders&) = delete;
  IncludeFolders& operator=(const IncludeFolders&) = delete;

  static const std::vector<std::string>& Current();
  static std::string NameOf(const std::string& path);

 private:
  const std::vector<std::string>& folders_;
  const Naming naming_;
};

}  // namespace ruxcomp::reader

#endif  // READER_INCLUDE_FOLDERS_H_
