#include "page/machine_set.h"

#include <filesystem>
#include <map>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "driver/compile_options.h"
#include "driver/script_list.h"
#include "machine/source.h"
#include "sources/machine_files.h"

namespace rux::page {
namespace {

namespace fs = std::filesystem;

bool IsFolder(const std::string& path) {
  std::error_code error;
  return fs::is_directory(path, error);
}

// Where the machine is below the innermost of the folders; without one, as it was named.
std::string PlaceOf(const std::string& machine, const std::vector<std::string>& folders) {
  const fs::path path = fs::path(sources::MachinePath(machine)).lexically_normal();
  std::string place = path.string();
  for (const std::string& folder : folders) {
    const fs::path below = path.lexically_relative(fs::path(folder).lexically_normal() / "");
    const bool is_inside = !below.empty() && *below.begin() != "..";
    if (is_inside && below.string().size() < place.size()) place = below.string();
  }
  return place;
}

std::vector<std::string> MachinesBelow(const std::string& folder, driver::CompileOptions options) {
  if (!IsFolder(folder)) return machine::MachinesOfRevision(folder);
  options.scripts = {folder};
  driver::ExpandMachines(options);
  return std::move(options.scripts);
}

}  // namespace

MachineSet MachinesOf(driver::CompileOptions options, const std::string& before) {
  std::vector<std::string> folders;
  for (const std::string& named : options.scripts) {
    if (IsFolder(named)) folders.push_back(named);
  }
  std::map<std::string, std::string> known;  // machines before, by their places
  if (!before.empty()) {
    for (const std::string& machine : MachinesBelow(before, options))
      known.emplace(PlaceOf(machine, {before}), machine);
  }
  driver::ExpandMachines(options);
  MachineSet set;
  for (const std::string& machine : options.scripts) {
    const auto found = known.find(PlaceOf(machine, folders));
    set.machines.push_back({machine, found == known.end() ? "" : found->second});
    if (found != known.end()) known.erase(found);
  }
  for (const auto& [place, machine] : known) set.gone.push_back(machine);
  return set;
}

}  // namespace rux::page
