// The commands of rux, and what each takes from its command line. Arguments are declared once:
// reading them, the help and the completion in shells go by the same rows.
#ifndef TOOL_COMMAND_H_
#define TOOL_COMMAND_H_

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "support/failure.h"

namespace rux::tool {

// One option or positional argument.
struct CommandArgument {
  struct Help {};
  struct Version {};
  // A count that may be 0.
  struct Limit {
    std::size_t* count;
  };
  // Where what was given goes: a flag, a count (1 at least), a limit, a text, one or more texts. Or
  // what is printed instead of running a command.
  using Target = std::variant<Help, Version, bool*, std::size_t*, Limit, std::string*,
                              std::vector<std::string>*>;
  // Returns what is wrong with a value; empty for a valid one.
  using Validate = std::function<std::string(const std::string& value)>;

  // "-o,--output" of an option. One without a dash is positional: "META".
  std::string names;
  Target target;
  std::string help;                  // one line
  std::string value_name;            // what the help calls the value: SCRIPT
  bool is_file = false;              // the value is the name of a file
  std::vector<std::string> choices;  // all that the value may be; none: more than can be listed
  bool is_required = false;
  std::vector<std::string> excluded;  // the names of those that it cannot be given with
  Validate validate;                  // empty: every value is valid

  bool is_option() const { return names.front() == '-'; }
  bool takes_value() const;
  bool takes_several() const;
  std::vector<std::string> each_name() const;  // "-o", "--output"

  // For the commands, when they declare it. `name` is what the help calls the value of an option;
  // a positional argument is called by its own name.
  CommandArgument& Value(const char* name);
  CommandArgument& File(const char* name = "");
  CommandArgument& OneOf(const char* name, std::vector<std::string> values);
  CommandArgument& Check(Validate check);
  CommandArgument& Required();
  CommandArgument& Without(std::vector<std::string> others);  // which were added before
};

// The arguments of one command.
class Arguments {
 public:
  Arguments();  // with --help

  // The target has to live until the command has run; the argument lives as long as this.
  CommandArgument& Add(const char* names, CommandArgument::Target target, const char* help);
  // What the help ends with.
  void Footer(const char* text) { footer_ = text; }

  const std::deque<CommandArgument>& all() const { return all_; }  // in the order of the help
  const std::string& footer() const { return footer_; }

  // The one with that name, dashes included; null when there is none.
  const CommandArgument* Find(const std::string& name) const;

 private:
  std::deque<CommandArgument> all_;
  std::string footer_;
};

// What a command does once the command line is read. May throw a Failure.
using Action = std::function<support::ExitStatus()>;

struct Command {
  const char* name;
  const char* help;                        // one line
  Action (*set_up)(Arguments& arguments);  // declares them; the action then finds them filled in
};

// "rux 0.1.0"
std::string VersionText();

// The program itself, which does nothing without a command.
const Command& Program();

// The rows of commands.def.
const std::vector<Command>& Commands();

#define COMMAND(name, set_up, help) Action set_up(Arguments& arguments);
#include "tool/commands.def"

}  // namespace rux::tool

#endif  // TOOL_COMMAND_H_
