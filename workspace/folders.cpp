#include "workspace/folders.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>

#include "support/uri.h"
#include "workspace/documents.h"

namespace rux::workspace {
namespace {

namespace fs = std::filesystem;

std::optional<std::string> FolderOfUri(const std::string& uri) {
  const std::optional<std::string> path = support::PathOfUri(uri);
  if (!path) return std::nullopt;
  const fs::path folder = fs::path(*path).lexically_normal();
  return (folder.has_filename() ? folder : folder.parent_path()).string();
}

}  // namespace

void Folders::Add(const std::string& uri) {
  if (const auto folder = FolderOfUri(uri)) paths_.insert(*folder);
}

void Folders::Remove(const std::string& uri) {
  if (const auto folder = FolderOfUri(uri)) paths_.erase(*folder);
}

std::string Folders::RootOf(const Document& document) const {
  if (!document.is_file()) return paths_.empty() ? "." : *paths_.begin();
  const fs::path own = fs::path(document.path()).parent_path();
  for (fs::path folder = own;; folder = folder.parent_path()) {
    if (paths_.count(folder.string()) != 0) return folder.string();
    if (folder == folder.parent_path()) return own.string();
  }
}

bool Folders::MayChange(const std::string& path) const {
  const bool is_file = fs::path(path).is_absolute();
  return !is_file || paths_.empty() ||
         std::any_of(paths_.begin(), paths_.end(),
                     [&](const auto& folder) { return PathFrom(folder, path) != path; });
}

std::string PathFrom(const std::string& folder, const std::string& path) {
  const fs::path relative = fs::path(path).lexically_relative(folder);
  return relative.empty() || *relative.begin() == ".." ? path : relative.string();
}

}  // namespace rux::workspace
