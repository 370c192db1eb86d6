#include "diagnostics/registry.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "findings/message_row.h"
#include "support/nearest.h"
#include "support/safe_text.h"
#include "support/wrap.h"

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
  return "no such message: " + support::NameText(id) +
         support::NearText(id, Ids(), "'rux explain' lists them all");
}

std::vector<std::string> Registry::Ids() const {
  std::vector<std::string> ids;
  ids.reserve(rows_.size());
  for (const MessageRow* row : rows_) ids.emplace_back(row->id);
  return ids;
}

namespace {

constexpr std::string_view kNoExample = "This message has no example script.";
constexpr std::string_view kMachineNote =
    "machine.rux is the rest of the machine; 'rux explain all' prints it at the end.";

constexpr std::size_t kWidth = 80;

std::string Wrapped(std::string_view text) { return support::Wrapped(text, kWidth) + '\n'; }

std::string Indented(std::string_view text) {
  std::string lines;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    lines.append("    ").append(line) += '\n';
    text.remove_prefix(std::min(line.size() + 1, text.size()));
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

// A heading, and a line for each message of the level, in the order of the ids.
std::string MessageGroup(const std::string& heading, Level level,
                         std::vector<const MessageRow*> rows) {
  const auto is_other = [&](const MessageRow* row) { return row->level != level; };
  rows.erase(std::remove_if(rows.begin(), rows.end(), is_other), rows.end());
  if (rows.empty()) return "";
  std::sort(rows.begin(), rows.end(),
            [](const MessageRow* a, const MessageRow* b) { return a->id < b->id; });
  std::string group = heading + '\n';
  for (const MessageRow* row : rows) group += fmt::format("  {:24} {}\n", row->id, row->summary);
  return group + '\n';
}

bool HasText(std::string_view text, std::string_view sought) {
  const auto is_same = [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) ==
           std::tolower(static_cast<unsigned char>(b));
  };
  return std::search(text.begin(), text.end(), sought.begin(), sought.end(), is_same) != text.end();
}

std::string Example(const char* title, std::string_view script) {
  return fmt::format("\n{}\n\n{}", title, Indented(script));
}

}  // namespace

std::vector<const MessageRow*> Registry::About(const std::string& text) const {
  std::vector<const MessageRow*> found = With(text);
  if (!found.empty() || support::ClosestName(text, Ids())) return found;
  const std::size_t family = text.rfind('_');
  return family == 0 || family == std::string::npos ? found : With(text.substr(0, family));
}

std::vector<const MessageRow*> Registry::With(std::string_view text) const {
  std::vector<const MessageRow*> found;
  for (const MessageRow* row : rows_) {
    if (HasText(row->id, text) || HasText(row->summary, text) || HasText(row->explanation, text))
      found.push_back(row);
  }
  return found;
}

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
  std::string list = MessageGroup("Errors", Level::kError, rows);
  for (const Group& group : kGroups) {
    list += MessageGroup(fmt::format("Warnings, {}: {}", WordOf(group.level), group.about),
                         group.level, rows);
  }
  list += MessageGroup("Notes", Level::kNote, rows);
  return list + "'rux explain ID' explains a message, 'rux explain WORD' searches the messages.\n";
}

std::string MachineText() { return "\nmachine.rux:\n\n" + Indented(kMachineScript); }

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
      "# Messages\n\nAll messages of `rux check` and `rux compile` about scripts, by the id at the "
      "end of each message. This\npage is what `rux explain --format markdown` prints.\n";
  for (const MessageRow* row : registry.rows()) text += '\n' + ExplanationMarkdown(*row);
  return text + "\n## machine.rux\n\nThe examples above include this script.\n\n" +
         Indented(kMachineScript);
}

}  // namespace rux::diagnostics
