// docs/diagnostics.schema.json
#include <cstddef>
#include <optional>
#include <string_view>

#include "diagnostics/diagnostic.h"
#include "diagnostics/machine_form.h"
#include "diagnostics/repeated.h"
#include "diagnostics/report.h"
#include "findings/message_row.h"
#include "support/json.h"
#include "support/text_stream.h"

namespace rux::diagnostics {
namespace {

using support::JsonArray;
using support::JsonObject;

// Longer ones are nothing to show, and may be as long as a script.
constexpr std::size_t kLongestLine = 1000;

void WriteLocation(const Location& at, JsonObject& json) {
  json.Member("file", at.path);
  if (at.line() != 0) json.Member("line", at.line());
  if (at.excerpt) {
    json.Member("column", at.excerpt->first_column);
    json.Member("end_column", at.excerpt->end_column);
    if (at.excerpt->text.size() <= kLongestLine) json.Member("source_line", at.excerpt->text);
  }
}

// The location, if there is one.
void WriteLocationOf(const Location& at, JsonObject& json) {
  if (at.path.empty()) return;
  json.Object("location", [&](JsonObject& location) { WriteLocation(at, location); });
}

void WriteNote(JsonObject& json, const Note& note) {
  json.Member("text", note.text);
  WriteLocationOf(note.at, json);
}

void WriteFix(const Diagnostic& diagnostic, JsonObject& json) {
  const std::optional<Fix> found = FixOf(diagnostic);
  if (!found) return;
  json.Object("fix", [&](JsonObject& fix) {
    fix.Member("begin", found->range.begin);
    fix.Member("end", found->range.end);
    fix.Member("text", found->text);
    fix.Member("safe", found->is_safe);
  });
}

void WriteFinding(JsonObject& json, const Diagnostic& diagnostic) {
  json.Member("id", diagnostic.row->id);
  json.Member("severity", WordOf(diagnostic.severity));
  if (diagnostic.row->severity == Severity::kWarning)
    json.Member("group", WordOf(diagnostic.row->level));
  if (diagnostic.section) json.Member("section", *diagnostic.section);
  if (diagnostic.entry) json.Member("entry", *diagnostic.entry);
  json.Member("text", diagnostic.text);
  if (!diagnostic.library_text.empty()) json.Member("library_text", diagnostic.library_text);
  WriteLocationOf(diagnostic.at, json);
  if (diagnostic.suggestion) json.Member("suggestion", *diagnostic.suggestion);
  WriteFix(diagnostic, json);
  json.Objects("notes", diagnostic.notes, WriteNote);
}

void WriteDiagnostic(JsonObject& json, const Diagnostic& diagnostic) {
  WriteFinding(json, diagnostic);
  json.Objects("included_from", diagnostic.included_from, WriteNote);
}

// With what comes together with other scripts.
void WriteOneOfMany(const Report& report, const Diagnostic& diagnostic, support::TextStream& out,
                    JsonObject& json) {
  constexpr const char* kRepeated = "repeated";
  const auto write_finding = [&] { WriteFinding(json, diagnostic); };
  const auto write_first = [&] { json.Member(kRepeated, false); };
  if (MayBeRepeated(report, diagnostic)) {
    WriteComparable(out, write_finding, write_first, [&] { json.Member(kRepeated, true); });
  } else {
    write_finding();
    write_first();
  }
  json.Objects("included_from", diagnostic.included_from, WriteNote);
}

void WriteVersion(JsonObject& json) {
  json.Schema(1);
  json.Member("version", RUX_TOOL_VERSION);
}

void WriteCounts(const Report& report, JsonObject& json) {
  json.Member("complete", report.is_complete);
  json.Member("errors", report.errors);
  json.Member("warnings", report.warnings);
  json.Member("not_shown", report.not_shown);
  json.Member("suppressed", report.suppressed);
  json.Member("in_baseline", report.in_baseline);
}

// write(JsonObject&, diagnostic)
template <class Write>
void WriteScript(const Report& report, JsonObject& json, Write write) {
  json.Member("script", report.script);
  WriteCounts(report, json);
  json.Objects("diagnostics", report.diagnostics, write);
}

}  // namespace

void WriteJsonReport(const Report& report, support::TextStream& out) {
  support::WriteJson(out, [&](JsonObject& json) {
    WriteVersion(json);
    WriteScript(report, json, WriteDiagnostic);
  });
}

void WriteJsonPiece(const Report& report, support::TextStream& out) {
  constexpr std::size_t kDepth = 2;
  JsonArray scripts(out, kDepth);
  const auto write = [&](JsonObject& json, const Diagnostic& diagnostic) {
    WriteOneOfMany(report, diagnostic, out, json);
  };
  scripts.Object([&](JsonObject& json) { WriteScript(report, json, write); });
}

void WriteJsonReports(const Pieces& pieces, support::TextStream& out) {
  support::WriteJson(out, [&](JsonObject& json) {
    WriteVersion(json);
    json.Array("scripts", [&](JsonArray& scripts) {
      pieces.add_all([&](std::string_view piece) { scripts.AddWritten(piece); });
    });
    WriteCounts(pieces.total(), json);
  });
}

}  // namespace rux::diagnostics
