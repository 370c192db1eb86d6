// The command line of rux.
#ifndef TOOL_COMMAND_LINE_H_
#define TOOL_COMMAND_LINE_H_

#include "support/exit_status.h"

namespace rux::tool {

// Runs the command that it names, or prints help, or tells what is wrong with it. May throw a
// Failure of the command.
support::ExitStatus RunCommandLine(int argc, const char* const* argv);

}  // namespace rux::tool

#endif  // TOOL_COMMAND_LINE_H_
