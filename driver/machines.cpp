#include "driver/machines.h"

#include <string>
#include <vector>

#include "driver/compile_options.h"
#include "reader/include_folders.h"
#include "settings/project.h"
#include "sources/main_scripts.h"

namespace rux::driver {
namespace {

std::vector<std::string> MachinesWith(const std::string& part, const settings::Project* project) {
  if (!sources::IsPart(part)) return {};
  if (project != nullptr) {
    std::vector<std::string> mains =
        sources::MainScriptsOf(part, settings::MainScriptsOf(*project));
    if (!mains.empty()) return mains;
  }
  return sources::FindMainScripts(part);
}

void UseProjectOf(const std::string& file, CompileOptions& options) {
  options.scripts = {file};
  UseProject(options);
}

}  // namespace

std::vector<std::string> MachinesWith(const std::string& file, CompileOptions options) {
  UseProjectOf(file, options);
  return MachinesWith(file, options.project.get());
}

std::vector<std::string> FindMachinesWith(const std::string& file, CompileOptions options) {
  UseProjectOf(file, options);
  const std::vector<std::string> names = options.all_include_folders();
  const ruxcomp::reader::IncludeFolders folders(names);
  return MachinesWith(file, options.project.get());
}

}  // namespace rux::driver
