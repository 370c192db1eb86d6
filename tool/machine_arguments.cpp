#include "tool/machine_arguments.h"

#include <utility>
#include <vector>

#include "driver/compile_options.h"
#include "machine/load.h"
#include "machine/machine.h"
#include "tool/command.h"
#include "tool/compile_arguments.h"

namespace rux::tool {

void AddMachine(Arguments& arguments, MachineOptions& options) {
  arguments
      .Add("MACHINE", &options.file,
           "A script, a debug meta file or a meta file; or REVISION:PATH for one of a git revision")
      .File()
      .Required();
}

void AddSearchOptions(Arguments& arguments, MachineOptions& options) {
  AddSearchOptions(arguments, options.include_folders, options.project);
}

machine::LoadOptions LoadOptionsOf(const MachineOptions& options) {
  return {options.include_folders, driver::ProjectsOf(options.project), ""};
}

machine::Machine LoadMachine(const MachineOptions& options) {
  std::vector<machine::Machine> machines = machine::Load({options.file}, LoadOptionsOf(options));
  return std::move(machines.front());
}

}  // namespace rux::tool
