// The help of rux and of its commands.
#ifndef TOOL_HELP_H_
#define TOOL_HELP_H_

#include <cstddef>
#include <string>

#include "tool/command.h"

namespace rux::tool {

// In lines of up to `width` columns.
std::string ProgramHelp(std::size_t width);
std::string CommandHelp(const Command& command, std::size_t width);

// The command of that name. Throws a Failure of wrong usage that says which one may be meant.
const Command& ExpectCommand(const std::string& name);

}  // namespace rux::tool

#endif  // TOOL_HELP_H_
