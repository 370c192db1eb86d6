// The one source that includes CLI11: each that does takes seconds more to compile.
#include "tool/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <sstream>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "support/name_text.h"
#include "support/nearest.h"
#include "support/standard_streams.h"
#include "tool/command.h"

namespace rux::tool {
namespace {

// From 1 on.
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

// Adds an argument to the command `app` by the type of its target.
class Adder {
 public:
  Adder(CLI::App& app, const CommandArgument& argument) : app_(app), argument_(argument) {}

  CLI::Option* operator()(const CommandArgument::Help&) const {
    return app_.set_help_flag(argument_.names, argument_.help);
  }
  CLI::Option* operator()(const CommandArgument::Version& version) const {
    return app_.set_version_flag(argument_.names, version.text, argument_.help);
  }
  CLI::Option* operator()(bool* flag) const {
    return app_.add_flag(argument_.names, *flag, argument_.help);
  }
  CLI::Option* operator()(std::size_t* count) const { return AddValue(*count)->check(IsCount()); }
  CLI::Option* operator()(std::string* text) const { return AddValue(*text); }
  CLI::Option* operator()(std::vector<std::string>* texts) const {
    // An option with a value takes one each time that it is given.
    return AddValue(*texts)->allow_extra_args(!argument_.is_option());
  }

 private:
  template <class Value>
  CLI::Option* AddValue(Value& value) const {
    CLI::Option* option = app_.add_option(argument_.names, value, argument_.help);
    // What stands by itself is called by its name.
    return option->type_name(argument_.is_option() ? argument_.value_name : "");
  }

  CLI::App& app_;
  const CommandArgument& argument_;
};

void AddTo(CLI::App& app, const CommandArgument& argument) {
  CLI::Option* option = std::visit(Adder(app, argument), argument.target);
  option->required(argument.is_required);
  if (!argument.choices.empty()) option->check(CLI::IsMember(argument.choices));
  if (argument.wrong) option->check(argument.wrong);
  if (!argument.excluded.empty()) option->excludes(app.get_option(argument.excluded));
}

Action SetUp(const Command& command, CLI::App& app) {
  Arguments arguments;
  Action action = command.set_up(arguments);
  for (const CommandArgument& argument : arguments.all()) AddTo(app, argument);
  app.footer(arguments.footer());
  return action;
}

std::string UnknownCommand(const std::string& name) {
  std::vector<std::string> names;
  for (const Command& command : Commands()) names.emplace_back(command.name);
  return "there is no command " + support::NameText(name) + support::NearText(name, names);
}

support::ExitStatus WrongUsage(const CLI::App& app, const CLI::ParseError& error,
                               const std::string& first) {
  const std::vector<CLI::App*> commands = app.get_subcommands();
  const bool is_unknown_command = commands.empty() && !first.empty() && first.front() != '-';
  const std::string text = is_unknown_command ? UnknownCommand(first) : error.what();
  const std::string command = commands.empty() ? "" : ' ' + commands.front()->get_name();
  support::PrintError("rux: error: " + text + "\nSee 'rux" + command + " --help'.\n");
  return support::ExitStatus::kWrongUsage;
}

}  // namespace

support::ExitStatus RunCommandLine(int argc, const char* const* argv) {
  CLI::App app(Program().help, Program().name);
  Action action = SetUp(Program(), app);
  for (const Command& command : Commands()) {
    CLI::App* sub_app = app.add_subcommand(command.name, command.help);
    // What is not asked for needs no arguments.
    if (std::find(argv, argv + argc, std::string_view(command.name)) == argv + argc) continue;
    sub_app->final_callback([&action, run = SetUp(command, *sub_app)] { action = run; });
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() != 0) return WrongUsage(app, error, argc > 1 ? argv[1] : "");
    // Help and version come this way, too.
    std::ostringstream text;
    app.exit(error, text);
    support::PrintOut(text.str());
    return support::ExitStatus::kDone;
  }
  if (!action) {
    support::PrintError(app.help());
    return support::ExitStatus::kWrongUsage;
  }
  return action();
}

}  // namespace rux::tool
