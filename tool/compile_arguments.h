// The arguments of every command that compiles or checks.
#ifndef TOOL_COMPILE_ARGUMENTS_H_
#define TOOL_COMPILE_ARGUMENTS_H_

#include <string>
#include <vector>

#include "diagnostics/severities.h"
#include "driver/compile_options.h"
#include "settings/project.h"
#include "tool/command.h"

namespace rux::tool {

// Where what a script names is looked for.
void AddSearchOptions(Arguments& arguments, std::vector<std::string>& include_folders,
                      settings::ProjectChoice& project);

// Those that say what is found in a machine, wherever it is shown.
void AddMachineOptions(Arguments& arguments, driver::CompileOptions& options);

void AddCompileOptions(Arguments& arguments, driver::CompileOptions& options);

// Of commands that report and write nothing.
Action SetUpReporting(Arguments& arguments, diagnostics::Purpose purpose);

// Parts of these, also for commands that compile only to compare: SCRIPT...; -W; where included
// files and the project are looked for, and --stdin-name.
void AddScripts(Arguments& arguments, driver::CompileOptions& options, const char* help);
void AddWarningChoice(Arguments& arguments, driver::CompileOptions& options, const char* help);
void AddProjectOptions(Arguments& arguments, driver::CompileOptions& options);

}  // namespace rux::tool

#endif  // TOOL_COMPILE_ARGUMENTS_H_
