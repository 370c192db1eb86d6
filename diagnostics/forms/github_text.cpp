// Workflow commands.
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

// What would end a command, or a property of it.
std::string Escaped(std::string_view text, std::string_view special) {
  std::string out;
  for (const char c : text) {
    const bool is_special = special.find(c) != std::string_view::npos;
    out += is_special ? support::Hex({&c, 1}, "%") : std::string(1, c);
  }
  return out;
}

std::string EscapedText(std::string_view text) { return Escaped(text, "%\r\n"); }
std::string EscapedProperty(std::string_view text) { return Escaped(text, "%\r\n:,"); }

std::string PropertiesOf(const Diagnostic& diagnostic) {
  const Location& at = diagnostic.at;
  std::string properties;
  if (!at.path.empty())
    properties += fmt::format("file={},", EscapedProperty(support::SafeText(at.path)));
  if (at.line() != 0) properties += fmt::format("line={},", at.line());
  if (at.excerpt) {
    properties +=
        fmt::format("col={},endColumn={},", at.excerpt->first_column, at.excerpt->end_column);
  }
  return properties + fmt::format("title={}", EscapedProperty(diagnostic.row->id));
}

void WriteGithub(const Report& report, bool is_piece, support::TextStream& out) {
  for (const Diagnostic& diagnostic : report.diagnostics) {
    std::string message = support::SafeText(WholeText(diagnostic));
    if (diagnostic.suggestion) message += '\n' + support::SafeText(SuggestionText(diagnostic));
    for (const Note& note : diagnostic.notes) {
      const std::string place =
          note.at.path.empty() ? "" : fmt::format("{}:{}: ", note.at.path, note.at.line());
      message += '\n' + support::SafeText(place + note.text);
    }
    const bool is_note = diagnostic.severity == Severity::kNote;
    const Repeatable repeatable(report, is_piece, diagnostic,
                                fmt::format("::notice {}::{} is in {}\n", PropertiesOf(diagnostic),
                                            diagnostic.row->id, kOthers),
                                out);
    out += fmt::format("::{} {}::{}\n", is_note ? "notice" : WordOf(diagnostic.severity),
                       PropertiesOf(diagnostic), EscapedText(message));
  }
  if (report.not_shown > 0)
    out += fmt::format("::notice title=not-shown::{}\n", NotShownText(report.not_shown));
}

}  // namespace

void WriteGithubText(const Report& report, support::TextStream& out) {
  WriteGithub(report, false, out);
}

void WriteGithubPiece(const Report& report, support::TextStream& out) {
  WriteGithub(report, true, out);
}

}  // namespace rux::diagnostics
