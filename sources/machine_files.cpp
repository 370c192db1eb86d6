#include "sources/machine_files.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace rux::sources {

FileForm FormByName(const std::string& path) {
  const std::filesystem::path suffix = std::filesystem::path(path).extension();
  if (suffix == ".rux") return FileForm::kScript;
  if (suffix == ".metad") return FileForm::kDebugMeta;
  return suffix == ".meta" ? FileForm::kMeta : FileForm::kOther;
}

std::string MachinePath(const std::string& path) {
  return std::filesystem::path(path).replace_extension().string();
}

std::vector<std::string> OneOfEachMachine(const std::vector<std::string>& paths) {
  std::map<std::string, std::string> kept;
  for (const std::string& path : paths) {
    const auto [known, is_new] = kept.emplace(MachinePath(path), path);
    if (!is_new && FormByName(path) < FormByName(known->second)) known->second = path;
  }
  std::vector<std::string> files;
  files.reserve(kept.size());
  for (const auto& [machine, file] : kept) files.push_back(file);
  return files;
}

}  // namespace rux::sources
