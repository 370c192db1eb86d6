#include "sources/script_path.h"

#include <sys/stat.h>

#include <algorithm>

namespace rux::sources {
namespace {

std::string Replaced(std::string path, char from, char to) {
  std::replace(path.begin(), path.end(), from, to);
  return path;
}

}  // namespace

std::string ToLibraryPath(const std::string& path) {
  return path.find('\\') != std::string::npos ? path : Replaced(path, '/', '\\');
}

std::string ToOpenablePath(const std::string& library_path) {
  struct stat status;
  if (stat(library_path.c_str(), &status) == 0) return library_path;
  return Replaced(library_path, '\\', '/');
}

std::string BaseNameOf(const std::string& library_path) {
  return library_path.substr(library_path.rfind('\\') + 1);
}

std::string FolderOf(const std::string& library_path) {
  return library_path.substr(0, library_path.rfind('\\') + 1);
}

}  // namespace rux::sources
