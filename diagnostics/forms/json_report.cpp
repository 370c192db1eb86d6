// docs/diagnostics.schema.json
#include "diagnostics/report.h"
#include "support/json_text.h"

namespace rux::diagnostics {
namespace {

// Raised when a member goes away or changes its meaning.
constexpr std::size_t kSchema = 1;

// Longer ones are nothing to show, and may be as long as a script.
constexpr std::size_t kLongestLine = 1000;

void WriteLocation(const Location& at, support::JsonWriter& json) {
  json.Open('{').Key("file").String(at.path);
  if (at.line() != 0) json.Key("line").Number(at.line());
  if (at.excerpt) {
    json.Key("column").Number(at.excerpt->first_column);
    json.Key("end_column").Number(at.excerpt->end_column);
    if (at.excerpt->text.size() <= kLongestLine) {
      json.Key("source_line").String(at.excerpt->text);
    }
  }
  json.Close();
}

void WriteNotes(const char* key, const std::vector<Note>& notes, support::JsonWriter& json) {
  json.Key(key).Open('[');
  for (const Note& note : notes) {
    json.Open('{').Key("text").String(note.text);
    if (!note.at.path.empty()) WriteLocation(note.at, json.Key("location"));
    json.Close();
  }
  json.Close();
}

void WriteDiagnostic(const Diagnostic& diagnostic, support::JsonWriter& json) {
  json.Open('{').Key("id").String(diagnostic.row->id);
  json.Key("severity").String(WordOf(diagnostic.severity));
  if (diagnostic.section) json.Key("section").String(*diagnostic.section);
  if (diagnostic.entry) json.Key("entry").String(*diagnostic.entry);
  json.Key("text").String(diagnostic.text);
  if (!diagnostic.at.path.empty()) WriteLocation(diagnostic.at, json.Key("location"));
  if (diagnostic.suggestion) json.Key("suggestion").String(*diagnostic.suggestion);
  WriteNotes("notes", diagnostic.notes, json);
  WriteNotes("included_from", diagnostic.included_from, json);
  json.Close();
}

}  // namespace

std::string JsonReport(const Report& report) {
  support::JsonWriter json;
  json.Open('{').Key("schema").Number(kSchema);
  json.Key("version").String(RUX_TOOL_VERSION);
  json.Key("script").String(report.script);
  json.Key("complete").Bool(report.is_complete);
  json.Key("errors").Number(report.errors);
  json.Key("warnings").Number(report.warnings);
  json.Key("not_shown").Number(report.not_shown);
  json.Key("diagnostics").Open('[');
  for (const Diagnostic& diagnostic : report.diagnostics) WriteDiagnostic(diagnostic, json);
  return json.Close().Close().TakeText();
}

}  // namespace rux::diagnostics
