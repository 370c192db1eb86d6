// Several scripts in one command. The library works on one script in a process: each gets its own.
#ifndef DRIVER_SCRIPTS_H_
#define DRIVER_SCRIPTS_H_

#include <functional>
#include <string>
#include <vector>

#include "driver/compile_options.h"
#include "support/failure.h"

namespace rux::driver {

// `name` with the name of the script, without folder and suffix, for each "{}".
std::string ExpandFileName(const std::string& script, const std::string& name);

// Throws a Failure of wrong usage when there are several scripts and a file that each of them is to
// write has a name (an empty one means no file) that is the same for all of them.
void RequireNamePerScript(const CompileOptions& options, const char* option,
                          const std::string& name);

// The options for each of the scripts. Throws a Failure of wrong usage when they do not fit
// together.
std::vector<CompileOptions> OptionsPerScript(const CompileOptions& options);

// Runs one as it is; several in processes of their own, with their output in the order of the
// scripts and one summary at the end. Returns the worst exit status. Throws a Failure.
support::ExitStatus RunAll(const std::vector<CompileOptions>& runs,
                           const std::function<support::ExitStatus(const CompileOptions&)>& run);

}  // namespace rux::driver

#endif  // DRIVER_SCRIPTS_H_
