// How the path of a script is read.
#ifndef READER_PATHS_H_
#define READER_PATHS_H_

#include <algorithm>
#include <string>

namespace reader {

// Finds what `find` knows under the path as it stands or, when that is nothing, under the path with
// its backslashes read as slashes.
template <typename Find>
auto FindByPath(std::string path, Find find) {
  auto found = find(path);
  if (found) return found;
  std::replace(path.begin(), path.end(), '\\', '/');
  return find(path);
}

}  // namespace reader

#endif  // READER_PATHS_H_
