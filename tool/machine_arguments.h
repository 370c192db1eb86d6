// Arguments of the commands that look at one machine.
#ifndef TOOL_MACHINE_ARGUMENTS_H_
#define TOOL_MACHINE_ARGUMENTS_H_

#include <string>
#include <vector>

#include "machine/load.h"
#include "machine/machine.h"
#include "settings/project.h"
#include "tool/command.h"

namespace rux::tool {

struct MachineOptions {
  std::string file;  // as machine::Load takes it
  std::vector<std::string> include_folders;
  settings::ProjectChoice project;
};

// MACHINE, the first argument, and the options of where what its scripts name is looked for, which
// come last in the help.
void AddMachine(Arguments& arguments, MachineOptions& options);
void AddSearchOptions(Arguments& arguments, MachineOptions& options);

machine::LoadOptions LoadOptionsOf(const MachineOptions& options);
// Throws a Failure.
machine::Machine LoadMachine(const MachineOptions& options);

}  // namespace rux::tool

#endif  // TOOL_MACHINE_ARGUMENTS_H_
