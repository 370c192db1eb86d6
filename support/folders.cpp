#include "support/folders.h"

#include <filesystem>
#include <string>
#include <system_error>

namespace rux::support {

namespace fs = std::filesystem;

fs::path FolderAbove(const fs::path& folder) {
  if (folder.empty()) return "..";
  const bool is_upwards = folder.filename() == ".." || folder.filename() == ".";
  return is_upwards ? folder / ".." : folder.parent_path();
}

bool IsTopOfRepository(const fs::path& folder) {
  std::error_code ignored;
  return fs::exists(folder / ".git", ignored);
}

bool IsTopFolder(const fs::path& folder) {
  std::error_code ignored;
  const fs::path here = folder.empty() ? "." : folder;
  return IsTopOfRepository(folder) || fs::equivalent(here, here / "..", ignored);
}

bool IsBelow(const std::string& path, const std::string& folder) {
  return path.compare(0, folder.size(), folder) == 0 &&
         (path.size() == folder.size() || path[folder.size()] == '/');
}

std::string WholeName(const std::string& path) {
  std::error_code error;
  const fs::path whole = fs::weakly_canonical(fs::absolute(path, error), error);
  return error ? path : whole.string();
}

}  // namespace rux::support
