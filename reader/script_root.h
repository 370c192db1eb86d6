// Scripts that are called by other paths than those under which they are found.
#ifndef READER_SCRIPT_ROOT_H_
#define READER_SCRIPT_ROOT_H_

#include <string>

namespace ruxcomp::reader {

// While one lives, a path that begins with `given` is looked for with `actual` in its place, so
// that a host may give scripts paths that do not depend on where they are. One at a time.
class ScriptRoot {
 public:
  ScriptRoot(std::string given, std::string actual);
  ~ScriptRoot();
  ScriptRoot(const ScriptRoot&) = delete;
  ScriptRoot& operator=(const ScriptRoot&) = delete;

  // Where the file of a path is; the path itself without a root.
  static std::string ActualPath(const std::string& path);

 private:
  const std::string given_;
  const std::string actual_;
};

}  // namespace ruxcomp::reader

#endif  // READER_SCRIPT_ROOT_H_
