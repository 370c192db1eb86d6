#include "imports/source_names.h"

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace rux::imports {
namespace {

// The last parts of a path, that many.
std::string EndOf(const std::filesystem::path& path, std::size_t parts) {
  std::filesystem::path end = path.filename();
  std::filesystem::path folder = path.parent_path();
  for (std::size_t i = 1; i < parts && folder.has_filename(); ++i) {
    end = folder.filename() / end;
    folder = folder.parent_path();
  }
  return end.string();
}

}  // namespace

std::vector<std::string> ShortestNames(const std::vector<std::string>& paths) {
  std::vector<std::string> names;
  std::vector<std::size_t> open(paths.size());  // places of those that are not set apart
  for (std::size_t i = 0; i < open.size(); ++i) open[i] = i;
  names.resize(paths.size());
  bool is_longer = true;
  for (std::size_t parts = 1; is_longer && !open.empty(); ++parts) {
    std::map<std::string, std::vector<std::size_t>> places;
    is_longer = false;
    for (const std::size_t place : open) {
      const std::string name = EndOf(paths[place], parts);
      is_longer = is_longer || name != names[place];
      names[place] = name;
      places[name].push_back(place);
    }
    open.clear();
    for (const auto& [name, same] : places) {
      if (same.size() > 1) open.insert(open.end(), same.begin(), same.end());
    }
  }
  return names;
}

}  // namespace rux::imports
