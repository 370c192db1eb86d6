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

// In the order of the help. Each has a file of its own in commands/.
const std::vector<Command>& Commands();

Action SetUpCompile(Arguments& arguments);
Action SetUpCheck(Arguments& arguments);
Action SetUpLs(Arguments& arguments);
Action SetUpGet(Arguments& arguments);
Action SetUpDump(Arguments& arguments);
Action SetUpWhere(Arguments& arguments);
Action SetUpDecompile(Arguments& arguments);
Action SetUpVerify(Arguments& arguments);
Action SetUpExplain(Arguments& arguments);

}  // namespace rux::tool

#endif  // TOOL_COMMAND_H_
