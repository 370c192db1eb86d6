// The names of the files that a run over several scripts writes.
#ifndef DRIVER_OUTPUT_NAMES_H_
#define DRIVER_OUTPUT_NAMES_H_

#include <string>

#include "driver/compile_options.h"

namespace rux::driver {

// `name` with the name of the script, without folder and suffix, for each "{}"; and for each
// "{dir}" the folder of the script as the working folder sees it. Throws a Failure of wrong usage
// when that would lead out of the folder that is before it in the name.
std::string ExpandFileName(const std::string& script, const std::string& name);

// Whether the name is another one for each script.
bool IsPerScript(const std::string& name);

// Whether the name is in the folder of its script, or in one of the same name elsewhere, which is
// made when it is not there.
bool HasScriptFolder(const std::string& name);

// The same name below `folder`, in a folder for that of the script. Throws a Failure of wrong usage
// for a name that cannot be below a folder.
std::string NameBelow(const std::string& folder, const std::string& name);

// Throws a Failure of wrong usage when there are several scripts and a file that each of them is to
// write has a name (an empty one means no file) that is the same for all of them.
void RequireNamePerScript(const CompileOptions& options, const char* option,
                          const std::string& name);

}  // namespace rux::driver

#endif  // DRIVER_OUTPUT_NAMES_H_
