#include "tool/help.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/failure.h"
#include "support/nearest.h"
#include "support/safe_text.h"
#include "support/wrap.h"
#include "tool/command.h"

namespace rux::tool {
namespace {

// A name in the left column, and what the right one says of it.
using Row = std::pair<std::string, std::string>;

constexpr std::size_t kMargin = 2;
// A longer name has a line of its own.
constexpr std::size_t kWidestName = 24;

std::string Table(const char* title, const std::vector<Row>& rows, std::size_t width) {
  if (rows.empty()) return "";
  std::size_t column = 0;
  for (const Row& row : rows) column = std::max(column, std::min(row.first.size(), kWidestName));
  // In a narrow terminal, the right column needs most of it.
  column = std::min(column, width / 3) + kMargin + kMargin;
  std::string text = std::string("\n") + title + ":\n";
  for (const auto& [name, about] : rows) {
    text.append(kMargin, ' ').append(name);
    if (kMargin + name.size() + kMargin > column) {
      text += '\n';
      text.append(column, ' ');
    } else {
      text.append(column - kMargin - name.size(), ' ');
    }
    text += support::Wrapped(about, width, column) + '\n';
  }
  return text;
}

// Lines are joined and broken anew, except those that begin with a blank: examples.
std::string Paragraphs(std::string_view text, std::size_t width) {
  std::string lines;
  std::string paragraph;
  const auto end_paragraph = [&] {
    if (!paragraph.empty()) lines += support::Wrapped(paragraph, width) + '\n';
    paragraph.clear();
  };
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    if (line.empty() || line.front() == ' ') {
      end_paragraph();
      lines.append(line).append("\n");
    } else {
      paragraph.append(paragraph.empty() ? "" : " ").append(line);
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  end_paragraph();
  return lines;
}

std::string NameOf(const CommandArgument& argument) {
  const char* several = argument.takes_several() && !argument.is_option() ? "..." : "";
  if (!argument.is_option()) return argument.names + several;
  std::string names;
  for (const std::string& name : argument.each_name()) names += (names.empty() ? "" : ", ") + name;
  return argument.takes_value() ? names + ' ' + argument.value_name : names;
}

bool Excludes(const Arguments& arguments, const CommandArgument& argument,
              const CommandArgument& other) {
  return std::any_of(argument.excluded.begin(), argument.excluded.end(),
                     [&](const std::string& name) { return arguments.Find(name) == &other; });
}

// "--name", "KIND or --name", "KIND, --long or --name".
std::string Alternatives(const std::vector<std::string>& names) {
  std::string text = names.front();
  for (std::size_t i = 1; i < names.size(); ++i)
    text += (i + 1 < names.size() ? ", " : " or ") + names[i];
  return text;
}

std::string AboutText(const Arguments& arguments, const CommandArgument& argument) {
  std::vector<std::string> others;
  for (const CommandArgument& other : arguments.all()) {
    if (Excludes(arguments, argument, other) || Excludes(arguments, other, argument))
      others.push_back(other.each_name().back());
  }
  return others.empty() ? argument.help
                        : argument.help + " (not with " + Alternatives(others) + ")";
}

std::string UsageLine(const Command& command, const Arguments& arguments) {
  std::string line = std::string("Usage: rux ") + command.name + " [OPTION...]";
  for (const CommandArgument& argument : arguments.all()) {
    if (argument.is_option()) continue;
    const std::string name = NameOf(argument);
    line += argument.is_required ? ' ' + name : " [" + name + ']';
  }
  return line;
}

std::string OptionsAndFooter(const Arguments& arguments, std::size_t width) {
  std::vector<Row> positionals;
  std::vector<Row> options;
  for (const CommandArgument& argument : arguments.all()) {
    (argument.is_option() ? options : positionals)
        .emplace_back(NameOf(argument), AboutText(arguments, argument));
  }
  std::string text = Table("Arguments", positionals, width) + Table("Options", options, width);
  if (!arguments.footer().empty()) text += '\n' + Paragraphs(arguments.footer(), width);
  return text;
}

}  // namespace

std::string ProgramHelp(std::size_t width) {
  Arguments arguments;
  Program().set_up(arguments);
  std::vector<Row> commands;
  for (const Command& command : Commands()) commands.emplace_back(command.name, command.help);
  return support::Wrapped(Program().help, width) + "\n\nUsage: rux COMMAND [ARGUMENT...]\n" +
         Table("Commands", commands, width) + OptionsAndFooter(arguments, width);
}

std::string CommandHelp(const Command& command, std::size_t width) {
  Arguments arguments;
  command.set_up(arguments);
  constexpr std::string_view kLead = "Usage: ";
  return support::Wrapped(command.help, width) + "\n\n" +
         support::Wrapped(UsageLine(command, arguments), width, kLead.size()) + '\n' +
         OptionsAndFooter(arguments, width);
}

const Command& ExpectCommand(const std::string& name) {
  std::vector<std::string> names;
  for (const Command& command : Commands()) {
    if (name == command.name) return command;
    names.emplace_back(command.name);
  }
  throw support::Failure(
      support::ExitStatus::kWrongUsage, "{}\nSee 'rux help'.",
      "no such command: " + support::NameText(name) + support::NearText(name, names));
}

}  // namespace rux::tool
