#include "tool/traps/trap_report.h"

#include "tool/text/safe_text.h"

namespace rux {
namespace {

Diagnostic Warning(MessageId id, std::string_view text) {
  Diagnostic warning;
  warning.id = id;
  warning.severity = RowOf(id).severity;
  // What it mentions may be as long as a script; the line that is shown below tells more of it.
  warning.text = Shortened(text);
  return warning;
}

Diagnostic WarningAt(MessageId id, const SourceFile* file, const reader::Section& section,
                     std::string_view text) {
  Diagnostic warning = Warning(id, text);
  warning.anchor = Anchor::kPlace;
  warning.at.source = file;
  warning.at.first_line = section.line;
  warning.section = std::string(section.name);
  return warning;
}

}  // namespace

Diagnostic& TrapReport::Add(MessageId id, const ScriptItem& item, std::string_view text,
                            std::string_view meant) {
  Diagnostic warning = WarningAt(id, item.file, *item.section, text);
  warning.at.first_line = item.item->line;
  warning.entry = std::string(item.name());
  if (!meant.empty()) warning.arguments.emplace_back(std::string(meant));
  return found_.emplace_back(std::move(warning));
}

Diagnostic& TrapReport::Add(MessageId id, const SourceSection& section, std::string_view text) {
  return found_.emplace_back(WarningAt(id, section.file, *section.section, text));
}

Diagnostic& TrapReport::Add(MessageId id, std::string_view text) {
  return found_.emplace_back(Warning(id, text));
}

void AddPlace(Diagnostic& diagnostic, std::string text, const SourcePlace& place) {
  Note note{std::move(text), {}};
  note.at.source = place.file;
  note.at.first_line = place.line;
  diagnostic.notes.push_back(std::move(note));
}

}  // namespace rux
