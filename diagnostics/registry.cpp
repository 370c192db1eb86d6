#include "diagnostics/registry.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "findings/message_row.h"
#include "support/nearest.h"
#include "support/safe_text.h"

namespace rux::diagnostics {

Registry::Registry(std::initializer_list<ruxcomp::findings::MessageRows> rooms) {
  for (const ruxcomp::findings::MessageRows& room : rooms) {
    for (const MessageRow* row : room) {
      rows_.push_back(row);
      by_id_.emplace(row->id, row);
    }
  }
}

const MessageRow* Registry::Find(std::string_view id) const {
  const auto found = by_id_.find(id);
  return found == by_id_.end() ? nullptr : found->second;
}

std::string Registry::UnknownText(const std::string& id) const {
  std::vector<std::string> ids;
  ids.reserve(rows_.size());
  for (const MessageRow* row : rows_) ids.emplace_back(row->id);
  return "there is no message " + support::NameText(id) + support::NearText(id, ids);
}

namespace {

constexpr std::string_view kNoExample =
    "No pair of scripts, a wrong one and a right one, shows it.";
constexpr std::string_view kMachineNote =
    "machine.rux holds the rest of a machine; 'rux explain' ends with one.";

std::string Wrapped(std::string_view text) {
  constexpr std::size_t kWidth = 80;
  std::string lines;
  std::size_t column = 0;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const bool breaks = column + 1 + end > kWidth;
    if (column > 0) lines += breaks ? '\n' : ' ';
    column = (column > 0 && !breaks ? column + 1 : 0) + end;
    lines += text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines + '\n';
}

std::string Indented(std::string_view text) {
  std::string lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n') + 1;
    lines.append("    ").append(text.substr(0, end));
    text.remove_prefix(end);
  }
  return lines;
}

bool UsesMachine(const MessageRow& row) {
  return row.wrong.find("machine.rux") != std::string_view::npos ||
         row.right.find("machine.rux") != std::string_view::npos;
}

// "error", "warning, loss"
std::string KindText(const MessageRow& row) {
  std::string kind(WordOf(row.severity));
  if (row.severity == Severity::kWarning) kind.append(", ").append(WordOf(row.level));
  return kind;
}

std::string Example(const char* title, std::string_view script) {
  return fmt::format("\n{}\n\n{}", title, Indented(script));
}

}  // namespace

const std::string_view kMachineScript = R"([MORVRUX]
VERSION = 1.0
[DEFINE]
VT_CONST      = 1
VT_CALC       = 2
VT_CALL       = 3
VT_TABLE      = 10
VT_SMBUS_READ = 12
BUSTYPE_SMBUS = 2
[SYSTEM]
TYPE    = 1
MODEL   = Board
FLAG    = 0
RUXLOOP = 1000
[GROUP]
PARENT     = 0
NAME       = BOARD
CHILDGROUP = 0
[PELMGROUP]
NAME    = EVENTS
ID      = 1
PID     = 0
SENSORS = 0x101
[SENSOR]
PARENT       = BOARD
NAME         = INLET
ID           = 0x101
TYPE         = 1
INITFLAG     = 3
CONTROLMASK  = 0
VALUE        = VT_SMBUS_READ, 0x4800, 1, BUSTYPE_SMBUS, 0x00
)";

std::string MessageList(const std::vector<const MessageRow*>& rows) {
  std::string list;
  for (const MessageRow* row : rows) {
    list += fmt::format("{:24} {:8} {}\n", row->id, WordOf(row->level), row->summary);
  }
  list += "\nWarnings are in one of three groups:\n";
  for (const Group& group : kGroups) {
    list += fmt::format("  {:8} {}\n", WordOf(group.level), group.about);
  }
  list += "\n'rux explain ID' explains one of them. The examples include this machine.rux:\n\n";
  return list + Indented(kMachineScript);
}

std::string ExplanationText(const MessageRow& row) {
  std::string text = fmt::format("{} ({}): {}\n\n{}", row.id, KindText(row), row.summary,
                                 Wrapped(row.explanation));
  if (row.wrong.empty()) return text + '\n' + Wrapped(kNoExample);
  text += Example("Wrong:", row.wrong) + Example("Right:", row.right);
  if (UsesMachine(row)) text += '\n' + Wrapped(kMachineNote);
  return text;
}

std::string ExplanationMarkdown(const MessageRow& row) {
  std::string text = fmt::format("## {}\n\n*{}*: {}.\n\n{}", row.id, KindText(row), row.summary,
                                 Wrapped(row.explanation));
  if (row.wrong.empty()) return text + '\n' + Wrapped(kNoExample);
  return text + Example("Wrong:", row.wrong) + Example("Right:", row.right);
}

std::string MessagesMarkdown(const Registry& registry) {
  std::string text =
      "# Messages\n\nEverything that `rux check` and `rux compile` say of a script, by the id that "
      "ends "
      "each message. This page\nis what `rux explain --format markdown` prints.\n";
  for (const MessageRow* row : registry.rows()) text += '\n' + ExplanationMarkdown(*row);
  return text + "\n## machine.rux\n\nThe examples above include this script.\n\n" +
         Indented(kMachineScript);
}

}  // namespace rux::diagnostics
