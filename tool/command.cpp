#include "tool/command.h"

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace rux::tool {

CommandArgument& CommandArgument::Value(const char* name) {
  if (is_option()) value_name = name;
  return *this;
}

CommandArgument& CommandArgument::File(const char* name) {
  is_file = true;
  // An empty one is most likely that of a shell variable.
  return Value(name).Check(
      [](const std::string& file) { return file.empty() ? "the file name is empty" : ""; });
}

CommandArgument& CommandArgument::OneOf(const char* name, std::vector<std::string> values) {
  choices = std::move(values);
  return Value(name);
}

CommandArgument& CommandArgument::Required() {
  is_required = true;
  return *this;
}

CommandArgument& CommandArgument::Without(const char* option) {
  excluded = option;
  return *this;
}

CommandArgument& CommandArgument::Check(Validate check) {
  validate = std::move(check);
  return *this;
}

bool CommandArgument::takes_several() const {
  return std::holds_alternative<std::vector<std::string>*>(target);
}

bool CommandArgument::takes_value() const {
  return takes_several() || std::holds_alternative<std::string*>(target) ||
         std::holds_alternative<std::size_t*>(target) || std::holds_alternative<Limit>(target);
}

std::vector<std::string> CommandArgument::each_name() const {
  std::vector<std::string> each;
  std::istringstream rest(names);
  for (std::string name; std::getline(rest, name, ',');) each.push_back(name);
  return each;
}

Arguments::Arguments() {
  Add("-h,--help", CommandArgument::Help(), "Print this help message and exit");
}

CommandArgument& Arguments::Add(const char* names, CommandArgument::Target target,
                                const char* help) {
  CommandArgument& argument = all_.emplace_back();
  argument.names = names;
  argument.target = std::move(target);
  argument.help = help;
  if (!argument.is_option()) argument.value_name = names;
  return argument;
}

const CommandArgument* Arguments::Find(const std::string& name) const {
  for (const CommandArgument& argument : all_) {
    const std::vector<std::string> names = argument.each_name();
    if (std::find(names.begin(), names.end(), name) != names.end()) return &argument;
  }
  return nullptr;
}

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
