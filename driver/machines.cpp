#include "driver/machines.h"

#include <string>
#include <vector>

#include "driver/compile_options.h"
#include "reader/include_folders.h"
#include "settings/project.h"
#include "sources/main_scripts.h"

namespace rux::driver {
namespace {

std::vector<std::string> MachinesWith(const std::string& part, const settings::Project* project,
                                      sources::MachineFinder& finder) {
  if (!sources::IsPart(part)) return {};
  if (project != nullptr) {
    std::vector<std::string> mains = finder.MainScriptsOf(part, settings::MainScriptsOf(*project));
    if (!mains.empty()) return mains;
  }
  return finder.FindMainScripts(part);
}

void UseProjectOf(const std::string& file, CompileOptions& options) {
  options.scripts = {file};
  UseProject(options);
}

}  // namespace

std::vector<std::string> MachinesWith(const std::string& file, CompileOptions options,
                                      sources::MachineFinder& finder) {
  UseProjectOf(file, options);
  return MachinesWith(file, options.project.get(), finder);
}

std::vector<std::string> FindMachinesWith(const std::string& file, CompileOptions options) {
  UseProjectOf(file, options);
  const std::vector<std::string> names = options.all_include_folders();
  const ruxcomp::reader::IncludeFolders folders(names);
  sources::MachineFinder finder;
  return MachinesWith(file, options.project.get(), finder);
}

}  // namespace rux::driver
