#include "tool/command.h"

#include <string>

namespace rux {

CLI::Validator IsFileName() {
  return CLI::Validator(
      [](const std::string& name) { return name.empty() ? "the file name is empty" : ""; }, "");
}

const std::vector<Command>& Commands() {
  static const std::vector<Command> commands = {
      {"compile", "Compile a script into a meta file", SetUpCompile},
      {"check", "Tell what is wrong with a script", SetUpCheck},
      {"ls", "List what a meta file holds", SetUpLs},
      {"get", "Ask a meta file for a section, an entry or a value", SetUpGet},
      {"dump", "Print all that a meta file or a debug meta file holds", SetUpDump},
      {"where", "Tell which line of a script said something", SetUpWhere},
      {"decompile", "Make a script of a debug meta file", SetUpDecompile},
      {"verify", "Tell whether compiled files are sound", SetUpVerify},
      {"explain", "Tell what the messages about scripts mean", SetUpExplain},
  };
  return commands;
}

}  // namespace rux
