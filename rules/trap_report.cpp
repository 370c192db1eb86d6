#include "rules/trap_report.h"

#include <functional>

#include "support/safe_text.h"

namespace rux::rules {
namespace {

diagnostics::Diagnostic Warning(diagnostics::MessageId id, std::string_view text) {
  diagnostics::Diagnostic warning;
  warning.id = id;
  warning.severity = diagnostics::RowOf(id).severity;
  // What it mentions may be as long as a script; the line that is shown below tells more of it.
  warning.text = support::Shortened(text);
  return warning;
}

diagnostics::Diagnostic WarningAt(diagnostics::MessageId id, const sources::SourceFile* file,
                                  const reader::Section& section, std::string_view text) {
  diagnostics::Diagnostic warning = Warning(id, text);
  warning.anchor = diagnostics::Anchor::kPlace;
  warning.at.source = file;
  warning.at.first_line = section.line;
  warning.section = std::string(section.name);
  return warning;
}

}  // namespace

diagnostics::Diagnostic& TrapReport::Add(diagnostics::MessageId id, const ScriptItem& item,
                                         std::string_view text, std::string_view meant) {
  diagnostics::Diagnostic warning = WarningAt(id, item.file, *item.section, text);
  warning.at.first_line = item.item->line;
  warning.entry = std::string(item.name());
  if (!meant.empty()) {
    warning.arguments.emplace_back(std::string(meant));
    warning.at.value_at = ValueAt(*item.item, meant);
  }
  return found_.emplace_back(std::move(warning));
}

diagnostics::Diagnostic& TrapReport::Add(diagnostics::MessageId id,
                                         const sources::SourceSection& section,
                                         std::string_view text) {
  return found_.emplace_back(WarningAt(id, section.file, *section.section, text));
}

diagnostics::Diagnostic& TrapReport::Add(diagnostics::MessageId id, std::string_view text) {
  return found_.emplace_back(Warning(id, text));
}

std::optional<std::size_t> ValueAt(const reader::Item& item, std::string_view part) {
  const std::less<> is_before;
  const char* end = item.value.data() + item.value.size();
  const bool is_inside =
      !is_before(part.data(), item.value.data()) && !is_before(end, part.data() + part.size());
  if (!is_inside) return std::nullopt;
  return static_cast<std::size_t>(part.data() - item.value.data());
}

void AddPlace(diagnostics::Diagnostic& diagnostic, std::string text,
              const sources::SourcePlace& place, std::optional<std::size_t> value_at) {
  diagnostics::Note note{std::move(text), {}};
  note.at.source = place.file;
  note.at.first_line = place.line;
  note.at.value_at = value_at;
  diagnostic.notes.push_back(std::move(note));
}

}  // namespace rux::rules
