#include "tool/diagnostics/from_messages.h"

#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "tool/text/safe_text.h"

namespace rux {
namespace {

// Messages that are not of the form "Error[file:line]: ...", by their beginnings.
struct PlainForm {
  std::string_view beginning;
  Severity severity;
  bool only_verbose;
};

constexpr PlainForm kPlainForms[] = {
    // Said at the end of every file.
    {"Parse::No more sections", Severity::kNote, true},
    // The reader inside this program stands in for the one that is not installed.
    {"Parse::load ", Severity::kNote, true},
    // A warning about the same item follows.
    {"Add Item(", Severity::kNote, true},
    {"Parse::", Severity::kError, false},
    {"CRUXEntry,", Severity::kError, false},
    {"ERROR: ", Severity::kError, false},
};

constexpr std::string_view kUnknownSection = "Create section(";
constexpr std::string_view kMissingInclude = "FILE %s cannot be loaded.";

// Whatever else a reader of somebody else's may say.
constexpr PlainForm kOtherForm = {"", Severity::kWarning, false};

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
  return text != nullptr ? Argument(Shortened(*text)) : argument;
}

void SetText(Remainder& rest, Diagnostic& diagnostic) {
  std::vector<Argument> shown;
  for (std::size_t i = rest.next; i < rest.arguments.size(); ++i) {
    diagnostic.arguments.push_back(rest.arguments[i]);
    shown.push_back(Shown(rest.arguments[i]));
  }
  diagnostic.text = FormatText(rest.format, shown);
  if (rest.format == kMissingInclude) diagnostic.missing_include = rest.TakeText();
}

Diagnostic UnknownSection(const Message& message) {
  Diagnostic diagnostic;
  diagnostic.severity = Severity::kWarning;
  diagnostic.anchor = Anchor::kUnknownSection;
  diagnostic.section = FormatText("%s", message.arguments, 1);
  diagnostic.text = "unknown section; it and its items are ignored";
  return diagnostic;
}

Diagnostic FromMessage(const Message& message) {
  Remainder rest{WithoutLineFeed(message.format), message.arguments};
  if (rest.format.substr(0, kUnknownSection.size()) == kUnknownSection) {
    return UnknownSection(message);
  }
  Diagnostic diagnostic;
  const bool is_error = Take(rest.format, "Error[%s:%u]");
  if (is_error || Take(rest.format, "Warning[%s:%u]")) {
    diagnostic.severity = is_error ? Severity::kError : Severity::kWarning;
    TakePlace(rest, diagnostic);
  } else {
    const PlainForm* form = &kOtherForm;
    for (const PlainForm& row : kPlainForms) {
      if (rest.format.substr(0, row.beginning.size()) != row.beginning) continue;
      form = &row;
      break;
    }
    diagnostic.severity = form->severity;
    diagnostic.only_verbose = form->only_verbose;
    Take(rest.format, "ERROR: ");
  }
  SetText(rest, diagnostic);
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
    Diagnostic diagnostic = FromMessage(message);
    if (accepted && message.phase == Phase::kCheck && diagnostic.severity == Severity::kError) {
      diagnostic.severity = Severity::kWarning;
    }
    diagnostics.push_back(std::move(diagnostic));
  }
  return diagnostics;
}

}  // namespace rux
