#include "tool/command.h"

#include <vector>

#include "tool/arguments.h"

namespace rux::tool {

namespace {

Action SetUpProgram(Arguments& arguments) {
  arguments.Add("--version", CommandArgument::Version{"rux " RUX_TOOL_VERSION},
                "Display program version information and exit");
  arguments.Footer(
      "Every command ends with one of these:\n"
      "  0  done\n"
      "  1  findings: the script has errors, what was asked for is not there\n"
      "  2  wrong usage\n"
      "  3  trouble: a file cannot be read or written, or is damaged\n"
      "or by the signal that stopped it, such as SIGPIPE when nobody reads what it prints.\n"
      "Whatever the end, a file that was to be written is there whole, or as it was before.\n\n"
      "Example:\n  rux compile boards/server.rux");
  return nullptr;
}

}  // namespace

const Command& Program() {
  static constexpr Command kProgram = {
      "rux", "Compiles hardware-description scripts and asks the meta files made of them.",
      SetUpProgram};
  return kProgram;
}

const std::vector<Command>& Commands() {
  static const std::vector<Command> commands = {
#define COMMAND(name, set_up, help) {#name, help, set_up},
#include "tool/commands.def"
  };
  return commands;
}

}  // namespace rux::tool
