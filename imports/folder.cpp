#include "imports/folder.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "imports/layout.h"
#include "settings/json_file.h"
#include "support/failure.h"
#include "support/placement.h"

namespace rux::imports {
namespace {

bool HasText(const std::string& path, const std::string& text) {
  std::error_code error;
  const bool is_as_long = std::filesystem::is_regular_file(path, error) &&
                          std::filesystem::file_size(path, error) == text.size();
  return is_as_long && !error && settings::ReadTextFile(path, text.size()) == text;
}

}  // namespace

std::string WithoutSlashAtEnd(std::string folder) {
  while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  return folder;
}

std::string PathIn(const std::string& folder, const std::string& name) {
  std::string path = folder;
  return path.append("/").append(name);
}

void ExpectNew(const std::string& folder, const std::vector<ScriptFile>& files) {
  for (const ScriptFile& file : files) {
    const std::string path = PathIn(folder, file.name);
    std::error_code ignored;
    if (!std::filesystem::exists(std::filesystem::symlink_status(path, ignored))) continue;
    throw support::Failure(support::ExitStatus::kTrouble, "{} is already there; nothing is written",
                           path);
  }
}

void PutInFolder(const std::string& folder, const std::vector<ScriptFile>& files) {
  std::vector<std::string> paths;
  paths.reserve(files.size());
  for (const ScriptFile& file : files) paths.push_back(PathIn(folder, file.name));
  std::vector<support::NewFile> placed;
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (!HasText(paths[i], files[i].text)) placed.push_back({paths[i], files[i].text});
  }
  support::MakeFolderOf(paths.front());
  support::PutInPlace(placed);
}

void RemoveFrom(const std::string& folder, const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    const std::string path = PathIn(folder, name);
    std::error_code error;
    std::filesystem::remove(path, error);
    if (error) throw support::SystemFailure("cannot remove", path, error.value());
  }
}

}  // namespace rux::imports
