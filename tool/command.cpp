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

CommandArgument& CommandArgument::Without(std::vector<std::string> others) {
  excluded = std::move(others);
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

Arguments::Arguments() { Add("-h,--help", CommandArgument::Help(), "Print this help and exit"); }

CommandArgument& Arguments::Add(const char* names, CommandArgument::Target target,
                                const char* help) {
  CommandArgument& argument = all_.emplace_back();
  argument.names = names;
  argument.target = target;
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

std::string VersionText() { return "rux " RUX_TOOL_VERSION; }

namespace {

Action SetUpProgram(Arguments& arguments) {
  arguments.Add("-V,--version", CommandArgument::Version{}, "Print the version and exit");
  arguments.Footer(
      "'rux help COMMAND' describes a command.\n\n"
      "Exit status:\n"
      "  0  done\n"
      "  1  findings: the script has errors, or what was asked for does not exist\n"
      "  2  wrong usage\n"
      "  3  trouble: a file cannot be read or written, or is damaged\n"
      "An output file is always either complete or unchanged.\n\n"
      "Example:\n  rux compile boards/server.rux");
  return nullptr;
}

}  // namespace

const Command& Program() {
  static constexpr Command kProgram = {
      "rux", "Compiles hardware-description scripts and queries the compiled files.", SetUpProgram};
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
