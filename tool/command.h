// The commands of rux.
#ifndef TOOL_COMMAND_H_
#define TOOL_COMMAND_H_

#include <functional>
#include <vector>

#include "CLI/CLI.hpp"
#include "tool/exit_status.h"

namespace rux {

// What a command does once the command line is read. May throw a Failure.
using Action = std::function<ExitStatus()>;

struct Command {
  const char* name;
  const char* help;                 // one line
  Action (*set_up)(CLI::App& app);  // declares the arguments, which the action then finds filled in
};

// For arguments that name a file: an empty one is wrong usage, most likely of a shell variable. The
// shell completes them with files: it is told by the validator's name.
inline constexpr char kFileName[] = "file name";
CLI::Validator IsFileName();

// For arguments that count something: from 1 on.
CLI::Validator IsCount();

// What stands in the help of the program besides its commands.
void SetUpProgram(CLI::App& app);

// In the order of the help. Each has a file of its own in commands/.
const std::vector<Command>& Commands();

Action SetUpCompile(CLI::App& app);
Action SetUpCheck(CLI::App& app);
Action SetUpLs(CLI::App& app);
Action SetUpGet(CLI::App& app);
Action SetUpDump(CLI::App& app);
Action SetUpWhere(CLI::App& app);
Action SetUpDecompile(CLI::App& app);
Action SetUpVerify(CLI::App& app);
Action SetUpExplain(CLI::App& app);

}  // namespace rux

#endif  // TOOL_COMMAND_H_
