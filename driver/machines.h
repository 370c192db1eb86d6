// The machines that a script of a command is a part of.
#ifndef DRIVER_MACHINES_H_
#define DRIVER_MACHINES_H_

#include <string>
#include <vector>

#include "driver/compile_options.h"
#include "sources/main_scripts.h"

namespace rux::driver {

// The main scripts that include the file, those of the project before those of the nearest folder;
// none when it is one, or when they are not known. `options`: of any script of the command, whose
// include folders hold by now.
std::vector<std::string> MachinesWith(const std::string& file, CompileOptions options,
                                      sources::MachineFinder& finder);

// The same with the include folders of the file's project.
std::vector<std::string> FindMachinesWith(const std::string& file, CompileOptions options);

}  // namespace rux::driver

#endif  // DRIVER_MACHINES_H_
