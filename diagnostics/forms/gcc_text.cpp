// A line for each diagnostic and note.
#include <fmt/format.h>

#include <string>
#include <string_view>

#include "diagnostics/diagnostic.h"
#include "diagnostics/machine_form.h"
#include "diagnostics/repeated.h"
#include "diagnostics/report.h"
#include "findings/message_row.h"
#include "support/safe_text.h"
#include "support/text_stream.h"

namespace rux::diagnostics {
namespace {

std::string Line(const Location& at, Severity severity, std::string_view text,
                 std::string_view id) {
  return fmt::format("{}: {}: {}{}\n", PlaceText(at), WordOf(severity), support::SafeText(text),
                     id);
}

// Without the INCLUDEs that lead there.
void WriteOwnLines(const Diagnostic& diagnostic, support::TextStream& out) {
  out += Line(diagnostic.at, diagnostic.severity, WholeText(diagnostic), Label(diagnostic));
  const auto add_note = [&](std::string_view note, const Location& at) {
    out += Line(at.path.empty() ? diagnostic.at : at, Severity::kNote, note, "");
  };
  if (diagnostic.suggestion) add_note(SuggestionText(diagnostic), {});
  for (const Note& note : diagnostic.notes) add_note(note.text, note.at);
}

void WriteIncludes(const Diagnostic& diagnostic, support::TextStream& out) {
  for (const Note& include : diagnostic.included_from) {
    const Location& at = include.at.path.empty() ? diagnostic.at : include.at;
    out += Line(at, Severity::kNote, include.text, "");
  }
}

void WriteGcc(const Report& report, bool is_piece, support::TextStream& out) {
  for (const Diagnostic& diagnostic : report.diagnostics) {
    const std::string also = fmt::format("{} is in {}", diagnostic.row->id, kOthers);
    Repeatable repeatable(
        report, is_piece, diagnostic,
        fmt::format("{}: {}: {}\n", PlaceText(diagnostic.at), WordOf(Severity::kNote), also), out);
    WriteOwnLines(diagnostic, out);
    repeatable.BeginOwn();
    WriteIncludes(diagnostic, out);
  }
  if (report.not_shown > 0) out += Line({}, Severity::kNote, NotShownText(report.not_shown), "");
}

}  // namespace

void WriteGccLines(const Diagnostic& diagnostic, support::TextStream& out) {
  WriteOwnLines(diagnostic, out);
  WriteIncludes(diagnostic, out);
}

void WriteGccText(const Report& report, support::TextStream& out) { WriteGcc(report, false, out); }

void WriteGccPiece(const Report& report, support::TextStream& out) { WriteGcc(report, true, out); }

}  // namespace rux::diagnostics
