// The one source that includes CLI11: each that does takes seconds more to compile.
#include "tool/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "support/failure.h"
#include "support/nearest.h"
#include "support/safe_text.h"
#include "support/standard_streams.h"
#include "tool/command.h"

namespace rux::tool {
namespace {

bool IsWholeNumber(const std::string& text) {
  // More digits would not fit.
  constexpr std::size_t kMostDigits = 18;
  return !text.empty() && text.size() <= kMostDigits &&
         text.find_first_not_of("0123456789") == std::string::npos;
}

// From 1 on.
CLI::Validator IsCount() {
  const auto is_wrong = [](const std::string& text) {
    const bool is_count = IsWholeNumber(text) && text.find_first_not_of('0') != std::string::npos;
    return is_count ? std::string() : text + " is no number from 1 on";
  };
  return CLI::Validator(is_wrong, "POSITIVE", "count");
}

// From 0 on.
CLI::Validator IsLimit() {
  const auto is_wrong = [](const std::string& text) {
    return IsWholeNumber(text) ? std::string() : text + " is no number from 0 on";
  };
  return CLI::Validator(is_wrong, "NONNEGATIVE", "limit");
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
  CLI::Option* operator()(const CommandArgument::Limit& limit) const {
    return AddValue(*limit.count)->check(IsLimit());
  }
  CLI::Option* operator()(std::string* text) const { return AddValue(*text); }
  CLI::Option* operator()(std::vector<std::string>* texts) const {
    // An option with a value takes one each time that it is given.
    return AddValue(*texts)->allow_extra_args(!argument_.is_option());
  }

 private:
  template <class Value>
  CLI::Option* AddValue(Value& value) const {
    CLI::Option* option = app_.add_option(argument_.names, value, argument_.help);
    // A positional argument is called by its name.
    return option->type_name(argument_.is_option() ? argument_.value_name : "");
  }

  CLI::App& app_;
  const CommandArgument& argument_;
};

void AddTo(CLI::App& app, const CommandArgument& argument) {
  CLI::Option* option = std::visit(Adder(app, argument), argument.target);
  option->required(argument.is_required);
  if (!argument.choices.empty()) option->check(CLI::IsMember(argument.choices));
  if (argument.validate) option->check(argument.validate);
  if (!argument.excluded.empty()) option->excludes(app.get_option(argument.excluded));
}

// The program, and those of its commands that occur among the words: what is not asked for needs no
// arguments.
class CommandLine {
 public:
  explicit CommandLine(const std::vector<std::string>& words)
      : app_(Program().help, Program().name), action_(SetUp(Program(), app_)) {
    for (const Command& command : Commands()) {
      CLI::App* subcommand = app_.add_subcommand(command.name, command.help);
      if (std::find(words.begin(), words.end(), command.name) == words.end()) continue;
      subcommand->final_callback([this, run = SetUp(command, *subcommand)] { action_ = run; });
    }
  }
  CommandLine(const CommandLine&) = delete;
  CommandLine& operator=(const CommandLine&) = delete;

  // Throws a CLI::ParseError.
  void Read(std::vector<std::string> words) {
    std::reverse(words.begin(), words.end());
    app_.parse(std::move(words));
  }

  const CLI::App& app() const { return app_; }
  const Action& action() const { return action_; }

  // That of the last command that the words name; null when they name none.
  const CLI::App* CommandApp() const {
    const std::vector<CLI::App*> commands = app_.get_subcommands();
    return commands.empty() ? nullptr : commands.back();
  }

 private:
  static Action SetUp(const Command& command, CLI::App& app) {
    Arguments arguments;
    Action run = command.set_up(arguments);
    for (const CommandArgument& argument : arguments.all()) AddTo(app, argument);
    app.footer(arguments.footer());
    return run;
  }

  CLI::App app_;
  Action action_;
};

std::string UnknownCommand(const std::string& name) {
  std::vector<std::string> names;
  for (const Command& command : Commands()) names.emplace_back(command.name);
  return "there is no command " + support::NameText(name) + support::NearText(name, names);
}

support::Failure WrongUsage(const CLI::App& app, const CLI::ParseError& error,
                            const std::string& first) {
  const std::vector<CLI::App*> commands = app.get_subcommands();
  const bool is_unknown_command = commands.empty() && !first.empty() && first.front() != '-';
  const std::string text = is_unknown_command ? UnknownCommand(first) : error.what();
  const std::string command = commands.empty() ? "" : ' ' + commands.front()->get_name();
  return support::Failure(support::ExitStatus::kWrongUsage, "{}\nSee 'rux{} --help'.", text,
                          command);
}

// Follows the last word, so that the value that ends with it is the one at the cursor. No word of a
// command line has a zero byte.
constexpr char kCursor = '\0';

// Takes over what was read of an argument.
void Take(const CommandArgument& argument, const std::vector<std::string>& values,
          const std::string& last_word, TypedLine& line) {
  for (const std::string& value : values) {
    if (!value.empty() && value.back() == kCursor) {
      line.argument = &argument;
      line.begin = last_word.size() - (value.size() - 1);
    } else if (!argument.is_option()) {
      line.given.emplace_back(argument.value_name, value);
    }
  }
}

}  // namespace

support::ExitStatus RunCommandLine(int argc, const char* const* argv) {
  const std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
  CommandLine line(words);
  try {
    line.Read(words);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() != 0) {
      throw WrongUsage(line.app(), error, words.empty() ? "" : words.front());
    }
    // Help and version come this way, too.
    std::ostringstream text;
    line.app().exit(error, text);
    support::PrintOut(text.str());
    return support::ExitStatus::kDone;
  }
  if (!line.action()) {
    support::PrintError(line.app().help());
    return support::ExitStatus::kWrongUsage;
  }
  return line.action()();
}

TypedLine ReadTypedLine(const std::vector<std::string>& words) {
  TypedLine typed;
  std::vector<std::string> marked = words;
  marked.back() += kCursor;
  CommandLine line(marked);
  try {
    line.Read(std::move(marked));
  } catch (const CLI::ParseError&) {
    // It was read as far as possible before it was found wrong.
  }
  const CLI::App* app = line.CommandApp();
  if (app == nullptr) return typed;
  for (const Command& command : Commands()) {
    if (app->get_name() == command.name) typed.command = &command;
  }
  typed.command->set_up(typed.arguments);
  for (const CommandArgument& argument : typed.arguments.all()) {
    if (!argument.takes_value()) continue;
    const CLI::Option* option = app->get_option(argument.each_name().front());
    Take(argument, option->results(), words.back(), typed);
  }
  return typed;
}

}  // namespace rux::tool
