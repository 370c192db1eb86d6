// The one source that includes CLI11: each that does takes seconds more to compile.
#include "tool/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "support/failure.h"
#include "support/nearest.h"
#include "support/safe_text.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "tool/command.h"
#include "tool/help.h"

namespace rux::tool {
namespace {

bool IsWholeNumber(const std::string& text) {
  // More digits would not fit.
  constexpr std::size_t kMostDigits = 18;
  return !text.empty() && text.size() <= kMostDigits &&
         text.find_first_not_of("0123456789") == std::string::npos;
}

std::string ReasonAgainstCount(const std::string& text) {
  const bool is_count = IsWholeNumber(text) && text.find_first_not_of('0') != std::string::npos;
  return is_count ? "" : "expected a number of at least 1, found " + support::NameText(text);
}

std::string ReasonAgainstLimit(const std::string& text) {
  return IsWholeNumber(text) ? ""
                             : "expected a number of at least 0, found " + support::NameText(text);
}

std::string ReasonAgainstChoice(const std::vector<std::string>& choices, const std::string& text) {
  if (std::find(choices.begin(), choices.end(), text) != choices.end()) return "";
  return "no such value: " + support::NameText(text) + support::NearText(text, choices);
}

// Adds an argument to the command `app` by the type of its target.
class Adder {
 public:
  Adder(CLI::App& app, const CommandArgument& argument) : app_(app), argument_(argument) {}

  CLI::Option* operator()(const CommandArgument::Help&) const {
    return app_.set_help_flag(argument_.names, argument_.help);
  }
  CLI::Option* operator()(const CommandArgument::Version&) const {
    return app_.set_version_flag(argument_.names, VersionText(), argument_.help);
  }
  CLI::Option* operator()(bool* flag) const {
    return app_.add_flag(argument_.names, *flag, argument_.help);
  }
  CLI::Option* operator()(std::size_t* count) const {
    return AddValue(*count)->check(ReasonAgainstCount);
  }
  CLI::Option* operator()(const CommandArgument::Limit& limit) const {
    return AddValue(*limit.count)->check(ReasonAgainstLimit);
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
  if (!argument.choices.empty()) {
    option->check([choices = argument.choices](const std::string& text) {
      return ReasonAgainstChoice(choices, text);
    });
  }
  if (argument.validate) option->check(argument.validate);
  for (const std::string& other : argument.excluded) option->excludes(app.get_option(other));
}

// The program, and those of its commands that occur among the words: what is not asked for needs no
// arguments.
class CommandLine {
 public:
  explicit CommandLine(const std::vector<std::string>& words)
      : app_(Program().help, Program().name), action_(SetUp(Program(), app_)) {
    app_.require_subcommand(0, 1);  // a second word may be the name of a command as well
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
    return run;
  }

  CLI::App app_;
  Action action_;
};

// What no argument takes.
std::string UnexpectedText(const CLI::App& app, const Arguments& arguments) {
  const std::vector<std::string> surplus = app.remaining(true);
  const std::string& word = surplus.front();
  const std::string name = word.substr(0, word.find('='));
  if (name.size() < 2 || name.front() != '-')
    return "unexpected argument " + support::NameText(word);
  std::vector<std::string> names;
  for (const CommandArgument& argument : arguments.all()) {
    for (const std::string& each : argument.each_name()) {
      if (argument.is_option() && each.size() > 2) names.push_back(each);
    }
  }
  // Half of the word is to be right, the dashes not counted.
  const std::size_t farthest = std::clamp<std::size_t>(name.size() / 2 - 1, 1, 3);
  const std::optional<std::string> meant = support::ClosestName(name, names, farthest);
  return "no such option: " + support::NameText(name) +
         (meant ? "; did you mean " + *meant + '?' : "");
}

std::string MissingValueText(const Arguments& arguments, const std::string& what) {
  const std::string name = what.substr(0, what.find(':'));
  const CommandArgument* argument = arguments.Find(name);
  return argument == nullptr ? what : name + " needs a value: " + argument->value_name;
}

// What the parser of the command line found, in the words of rux.
std::string ErrorText(const CLI::App& app, const Arguments& arguments,
                      const CLI::ParseError& error) {
  std::string what = error.what();
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr)
    return UnexpectedText(app, arguments);
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr)
    return MissingValueText(arguments, what);
  constexpr std::string_view kExcludes = " excludes ";
  const std::size_t excludes = what.find(kExcludes);
  if (dynamic_cast<const CLI::ExcludesError*>(&error) != nullptr && excludes != std::string::npos) {
    return what.substr(0, excludes) + " and " + what.substr(excludes + kExcludes.size()) +
           " cannot be given together";
  }
  return what;
}

support::Failure WrongUsage(const CLI::App& app, const CLI::ParseError& error,
                            const std::string& first) {
  const std::vector<CLI::App*> commands = app.get_subcommands();
  if (commands.empty() && !first.empty() && first.front() != '-') ExpectCommand(first);
  const Command& command =
      commands.empty() ? Program() : ExpectCommand(commands.front()->get_name());
  Arguments arguments;
  command.set_up(arguments);
  return support::Failure(support::ExitStatus::kWrongUsage, "{}\nSee 'rux help{}'.",
                          ErrorText(app, arguments, error),
                          commands.empty() ? "" : std::string(" ") + command.name);
}

// The help or the version, which the parser answers as if they were errors.
std::string AnswerText(const CLI::App& app, const CLI::ParseError& error) {
  if (dynamic_cast<const CLI::CallForHelp*>(&error) == nullptr) return VersionText() + '\n';
  const std::vector<CLI::App*> commands = app.get_subcommands();
  return commands.empty()
             ? ProgramHelp(support::TextWidth())
             : CommandHelp(ExpectCommand(commands.front()->get_name()), support::TextWidth());
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
    } else {
      line.given.emplace_back(
          argument.is_option() ? argument.each_name().back() : argument.value_name, value);
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
    support::PrintOut(AnswerText(line.app(), error));
    return support::ExitStatus::kDone;
  }
  if (!line.action()) {
    support::PrintError(ProgramHelp(support::TextWidth()));
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
