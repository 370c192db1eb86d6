#include "tool/command.h"

#include <string>

namespace rux {

CLI::Validator IsFileName() {
  return CLI::Validator(
      [](const std::string& name) { return name.empty() ? "the file name is empty" : ""; }, "",
      kFileName);
}

CLI::Validator IsCount() {
  const auto is_wrong = [](const std::string& text) {
    // More than anybody counts would not fit.
    constexpr std::size_t kMostDigits = 18;
    const bool is_number = text.size() <= kMostDigits &&
                           text.find_first_not_of("0123456789") == std::string::npos &&
                           text.find_first_not_of('0') != std::string::npos;
    return is_number ? std::string() : text + " is no number from 1 on";
  };
  return CLI::Validator(is_wrong, "POSITIVE", "count");
}

void SetUpProgram(CLI::App& app) {
  app.name("rux");
  app.description("Compiles hardware-description scripts and asks the meta files made of them.");
  app.set_version_flag("--version", "rux " RUX_TOOL_VERSION);
  app.footer(
      "Every command ends with one of these:\n"
      "  0  done\n"
      "  1  findings: the script has errors, what was asked for is not there\n"
      "  2  wrong usage\n"
      "  3  trouble: a file cannot be read or written, or is damaged\n"
      "or by the signal that stopped it, such as SIGPIPE when nobody reads what it prints.\n"
      "Whatever the end, a file that was to be written is there whole, or as it was before.\n\n"
      "Example:\n  rux compile boards/server.rux");
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
