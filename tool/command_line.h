// The command line of rux, read in one way for running and for completing.
#ifndef TOOL_COMMAND_LINE_H_
#define TOOL_COMMAND_LINE_H_

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "support/failure.h"
#include "tool/command.h"

namespace rux::tool {

// Runs the command that it names, or prints help, or reports what is wrong with it. May throw a
// Failure of the command.
support::ExitStatus RunCommandLine(int argc, const char* const* argv);

// Values that were given, by the names that the help gives the arguments: "META", "--kind".
using GivenValues = std::vector<std::pair<std::string, std::string>>;

// A command line that is still being typed.
struct TypedLine {
  const Command* command = nullptr;  // null: it names none yet
  Arguments arguments;               // of the command
  GivenValues given;
  // What the word at the cursor is the value of, from that byte of the word on. Null: of nothing.
  const CommandArgument* argument = nullptr;
  std::size_t begin = 0;
};

// The words after `rux` up to the cursor, the last of which may go on. What is wrong with them does
// not matter.
TypedLine ReadTypedLine(const std::vector<std::string>& words);

}  // namespace rux::tool

#endif  // TOOL_COMMAND_LINE_H_
