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

bool IsTopFolder(const fs::path& folder) {
  std::error_code ignored;
  const fs::path here = folder.empty() ? "." : folder;
  return fs::exists(here / ".git", ignored) || fs::equivalent(here, here / "..", ignored);
}

std::string WholeName(const std::string& path) {
  std::error_code error;
  const fs::path whole = fs::weakly_canonical(fs::absolute(path, error), error);
  return error ? path : whole.string();
}

}  // namespace rux::support
