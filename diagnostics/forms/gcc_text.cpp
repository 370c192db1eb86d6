// A line for each diagnostic and note.
#include <fmt/format.h>

#include <string>
#include <string_view>

#include "diagnostics/diagnostic.h"
#include "diagnostics/machine_form.h"
#include "diagnostics/report.h"
#include "findings/message_row.h"
#include "support/safe_text.h"
#include "support/text_stream.h"

namespace rux::diagnostics {
namespace {

std::string Line(const Location& at, Severity severity, std::string_view text,
                 std::string_view id) {
  std::string place = support::SafePath(at.path.empty() ? "rux" : at.path);
  if (at.line() != 0) place += fmt::format(":{}", at.line());
  if (at.excerpt) place += fmt::format(":{}", at.excerpt->first_column);
  return fmt::format("{}: {}: {}{}\n", place, WordOf(severity), support::SafeText(text), id);
}

}  // namespace

void WriteGccLines(const Diagnostic& diagnostic, support::TextStream& out) {
  out += Line(diagnostic.at, diagnostic.severity, WholeText(diagnostic), Label(diagnostic));
  const auto add_note = [&](std::string_view note, const Location& at) {
    out += Line(at.path.empty() ? diagnostic.at : at, Severity::kNote, note, "");
  };
  if (diagnostic.suggestion) add_note(SuggestionText(diagnostic), {});
  for (const Note& note : diagnostic.notes) add_note(note.text, note.at);
  for (const Note& include : diagnostic.included_from) add_note(include.text, include.at);
}

void WriteGccText(const Report& report, support::TextStream& out) {
  for (const Diagnostic& diagnostic : report.diagnostics) WriteGccLines(diagnostic, out);
  if (report.not_shown > 0) out += Line({}, Severity::kNote, NotShownText(report.not_shown), "");
}

}  // namespace rux::diagnostics
