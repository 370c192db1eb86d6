// The commands of rux.
#ifndef TOOL_COMMAND_H_
#define TOOL_COMMAND_H_

#include <functional>
#include <vector>

#include "support/failure.h"
#include "tool/arguments.h"

namespace rux::tool {

// What a command does once the command line is read. May throw a Failure.
using Action = std::function<support::ExitStatus()>;

struct Command {
  const char* name;
  const char* help;                        // one line
  Action (*set_up)(Arguments& arguments);  // declares them; the action then finds them filled in
};

// The program itself, which does nothing without a command.
const Command& Program();

// The rows of commands.def.
const std::vector<Command>& Commands();

#define COMMAND(name, set_up, help) Action set_up(Arguments& arguments);
#include "tool/commands.def"

}  // namespace rux::tool

#endif  // TOOL_COMMAND_H_
