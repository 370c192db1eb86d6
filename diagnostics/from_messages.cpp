#include "diagnostics/from_messages.h"

#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "support/safe_text.h"

namespace rux::diagnostics {
namespace {

// Takes `beginning` off `text` when it stands there.
bool Take(std::string_view& text, std::string_view beginning) {
  if (text.substr(0, beginning.size()) != beginning) return false;
  text.remove_prefix(beginning.size());
  return true;
}

std::string_view WithoutLineFeed(std::string_view format) {
  if (!format.empty() && format.back() == '\n') format.remove_suffix(1);
  return format;
}

// What is left of a message while its parts are taken off.
struct Remainder {
  std::string_view format;
  const std::vector<Argument>& arguments;
  std::size_t next = 0;

  std::string TakeText() { return FormatText("%s", arguments, next++); }
};

// The place and the names that a message of the checks begins with, from behind "Error" on.
void TakePlace(Remainder& rest, Diagnostic& diagnostic) {
  diagnostic.anchor = Anchor::kPlace;
  diagnostic.file = rest.TakeText();
  const auto* line = rest.next < rest.arguments.size()
                         ? std::get_if<std::uint32_t>(&rest.arguments[rest.next++])
                         : nullptr;
  if (line != nullptr) diagnostic.line = *line;
  // The texts differ in what stands between the parts: a colon or a comma, a blank or none.
  if (!Take(rest.format, ":")) Take(rest.format, ",");
  Take(rest.format, " ");
  if (!Take(rest.format, "[%s]")) return;
  diagnostic.section = rest.TakeText();
  if (Take(rest.format, ":%s")) diagnostic.entry = rest.TakeText();
  Take(rest.format, ",");
  Take(rest.format, " ");
  // The entry's line is where it stands, and it stands nowhere.
  if (diagnostic.line == 0 && diagnostic.entry) diagnostic.anchor = Anchor::kMissingEntry;
}

// Values may be as long as a script; the line that is shown below tells more of them.
Argument Shown(const Argument& argument) {
  const auto* text = std::get_if<std::string>(&argument);
  return text != nullptr ? Argument(support::Shortened(*text)) : argument;
}

void SetText(Remainder& rest, Diagnostic& diagnostic) {
  std::vector<Argument> shown;
  for (std::size_t i = rest.next; i < rest.arguments.size(); ++i) {
    diagnostic.arguments.push_back(rest.arguments[i]);
    shown.push_back(Shown(rest.arguments[i]));
  }
  diagnostic.text = FormatText(rest.format, shown);
}

Diagnostic UnknownSection(const Message& message) {
  Diagnostic diagnostic;
  diagnostic.anchor = Anchor::kUnknownSection;
  diagnostic.section = FormatText("%s", message.arguments, 1);
  diagnostic.text = "unknown section; it and its items are ignored";
  diagnostic.arguments.emplace_back(*diagnostic.section);
  return diagnostic;
}

Diagnostic FromText(const Message& message) {
  Diagnostic diagnostic;
  Remainder rest{WithoutLineFeed(message.format), message.arguments};
  diagnostic.severity = Severity::kWarning;
  if (Take(rest.format, "Error[%s:%u]")) {
    diagnostic.severity = Severity::kError;
    TakePlace(rest, diagnostic);
  } else if (Take(rest.format, "Warning[%s:%u]")) {
    TakePlace(rest, diagnostic);
  } else {
    Take(rest.format, "ERROR: ");
  }
  SetText(rest, diagnostic);
  return diagnostic;
}

Diagnostic FromMessage(const Message& message, bool accepted) {
  const MessageRow* row = FindMessageByText(message.format);
  // A reader of somebody else's may say whatever it likes.
  if (row == nullptr) return FromText(message);
  const bool is_unknown_section = row->number == MessageId::kUnknownSection;
  Diagnostic diagnostic = is_unknown_section ? UnknownSection(message) : FromText(message);
  diagnostic.id = row->number;
  // Some of what the check calls an error is none of its reasons to refuse a script.
  const bool may_be_reason = diagnostic.severity == Severity::kError && !accepted;
  if (is_unknown_section || !may_be_reason) diagnostic.severity = row->severity;
  // The library's remarks.
  diagnostic.only_verbose = row->severity == Severity::kNote;
  return diagnostic;
}

// The messages of the reading, one of which is crossed off for each that the check repeats: some
// items are checked in both.
class Repeats {
 public:
  explicit Repeats(const std::vector<Message>& messages) {
    for (const Message& message : messages) {
      if (message.phase == Phase::kParse) said_.insert(KeyOf(message));
    }
  }

  bool CrossOff(const Message& message) {
    if (message.phase != Phase::kCheck) return false;
    const auto found = said_.find(KeyOf(message));
    if (found == said_.end()) return false;
    said_.erase(found);
    return true;
  }

 private:
  using Key = std::pair<std::string_view, const std::vector<Argument>&>;

  static Key KeyOf(const Message& message) { return {message.format, message.arguments}; }

  std::multiset<Key> said_;
};

}  // namespace

std::vector<Diagnostic> DiagnosticsFrom(const std::vector<Message>& messages, bool accepted) {
  std::vector<Diagnostic> diagnostics;
  Repeats repeats(messages);
  for (const Message& message : messages) {
    if (repeats.CrossOff(message)) continue;
    diagnostics.push_back(FromMessage(message, accepted));
  }
  return diagnostics;
}

}  // namespace rux::diagnostics
