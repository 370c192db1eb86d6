#include "sources/script_path.h"

#include <sys/stat.h>

#include <string>

#include "ruxcomp/language/paths.h"

namespace rux::sources {

std::string ToOpenablePath(const std::string& library_path) {
  struct stat status;
  std::string path = ruxcomp::language::WithSlashes(library_path);
  return path != library_path && stat(library_path.c_str(), &status) == 0 ? library_path : path;
}

}  // namespace rux::sources
