#include "rules/trap_report.h"

#include <utility>

#include "support/safe_text.h"

namespace rux::rules {
namespace {

diagnostics::Diagnostic Warning(const findings::MessageRow& row, std::string_view text) {
  diagnostics::Diagnostic warning;
  warning.row = &row;
  warning.severity = row.severity;
  // What it mentions may be as long as a script; the line that is shown below tells more of it.
  warning.text = support::Shortened(text);
  return warning;
}

diagnostics::Diagnostic WarningAt(const findings::MessageRow& row, const sources::SourceFile& file,
                                  const reader::Section& section, std::string_view text,
                                  std::string_view meant) {
  diagnostics::Diagnostic warning = Warning(row, text);
  warning.at = diagnostics::LocationIn(file, file.RangeOf(meant));
  warning.section = std::string(section.name);
  return warning;
}

}  // namespace

diagnostics::Diagnostic& TrapReport::Add(const findings::MessageRow& row, const ScriptItem& item,
                                         std::string_view text, std::string_view meant) {
  diagnostics::Diagnostic warning =
      WarningAt(row, *item.file, *item.section, text, meant.empty() ? item.name() : meant);
  warning.entry = std::string(item.name());
  if (!meant.empty()) warning.arguments.emplace_back(std::string(meant));
  return found_.emplace_back(std::move(warning));
}

diagnostics::Diagnostic& TrapReport::Add(const findings::MessageRow& row,
                                         const sources::SourceSection& section,
                                         std::string_view text) {
  return found_.emplace_back(
      WarningAt(row, *section.file, *section.section, text, section.section->header));
}

diagnostics::Diagnostic& TrapReport::Add(const findings::MessageRow& row, std::string_view text) {
  return found_.emplace_back(Warning(row, text));
}

void AddPlace(diagnostics::Diagnostic& diagnostic, std::string text,
              const sources::SourcePlace& place, std::string_view meant) {
  const support::ByteRange range =
      meant.empty() ? place.file->RangeAt(place.line) : place.file->RangeOf(meant);
  diagnostic.notes.push_back({std::move(text), diagnostics::LocationIn(*place.file, range)});
}

}  // namespace rux::rules
