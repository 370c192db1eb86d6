// The paths of scripts.
//
// In the library's paths only backslashes separate folders: what is before the last one is the
// folder of included files, what follows it is the name in messages. The reader opens a path as it
// is written or, when there is no such file, with its backslashes read as slashes.
#ifndef RUXCOMP_LANGUAGE_PATHS_H_
#define RUXCOMP_LANGUAGE_PATHS_H_

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace ruxcomp::language {

inline constexpr char kFolderSeparator = '\\';

// How much of a path is its folder, the last separator included; 0 when there is none.
constexpr std::size_t FolderSize(std::string_view path) {
  return path.rfind(kFolderSeparator) + 1;  // npos + 1 is 0
}

constexpr std::string_view FolderOf(std::string_view path) {
  return path.substr(0, FolderSize(path));
}
constexpr std::string_view BaseNameOf(std::string_view path) {
  return path.substr(FolderSize(path));
}

// The library's form of a path of the system. A path that has a backslash already is kept.
inline std::string ToLibraryPath(std::string path) {
  if (path.find(kFolderSeparator) == std::string::npos) {
    std::replace(path.begin(), path.end(), '/', kFolderSeparator);
  }
  return path;
}

// The second name under which the reader looks for a file.
inline std::string WithSlashes(std::string path) {
  std::replace(path.begin(), path.end(), kFolderSeparator, '/');
  return path;
}

// What find(path) finds under the path as it is or, failing that, under its second name.
template <class Find>
auto FindByPath(std::string path, Find find) {
  auto found = find(path);
  return found ? found : find(WithSlashes(std::move(path)));
}

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_PATHS_H_
