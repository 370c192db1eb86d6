// The arguments of every command that compiles.
#ifndef TOOL_COMPILE_ARGUMENTS_H_
#define TOOL_COMPILE_ARGUMENTS_H_

#include "driver/compile_options.h"
#include "tool/command.h"

namespace rux::tool {

void AddCompileOptions(Arguments& arguments, driver::CompileOptions& options);

}  // namespace rux::tool

#endif  // TOOL_COMPILE_ARGUMENTS_H_
