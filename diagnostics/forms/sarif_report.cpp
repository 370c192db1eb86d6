// Static Analysis Results Interchange Format, version 2.1.0.
#include <fmt/format.h>

#include <map>
#include <string_view>

#include "diagnostics/report.h"
#include "support/json_text.h"

namespace rux::diagnostics {
namespace {

// A path as a URI reference: relative ones stay relative to where the run was made.
std::string UriOf(std::string_view path) {
  constexpr std::string_view kPlain = "-._~/";
  std::string uri = path.substr(0, 1) == "/" ? "file://" : "";
  for (const char c : path) {
    const bool is_plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                          (c >= '0' && c <= '9') || kPlain.find(c) != std::string_view::npos;
    uri += is_plain ? std::string(1, c) : fmt::format("%{:02X}", static_cast<unsigned char>(c));
  }
  return uri;
}

void WriteMessage(const char* key, std::string_view text, support::JsonWriter& json) {
  json.Key(key).Open('{').Key("text").String(text).Close();
}

void WriteRegion(const char* key, const Excerpt& excerpt, support::JsonWriter& json) {
  json.Key(key).Open('{').Key("startLine").Number(excerpt.line);
  json.Key("startColumn").Number(excerpt.first_column);
  json.Key("endColumn").Number(excerpt.end_column).Close();
}

void WriteArtifact(const Location& at, support::JsonWriter& json) {
  json.Key("artifactLocation").Open('{').Key("uri").String(UriOf(at.path)).Close();
}

// The members of a location, without its braces.
void WriteLocation(const Location& at, support::JsonWriter& json) {
  json.Key("physicalLocation").Open('{');
  WriteArtifact(at, json);
  if (at.excerpt) {
    WriteRegion("region", *at.excerpt, json);
  } else if (at.line() != 0) {
    json.Key("region").Open('{').Key("startLine").Number(at.line()).Close();
  }
  json.Close();
}

void WriteRelated(const std::vector<Note>& notes, std::size_t& id, support::JsonWriter& json) {
  for (const Note& note : notes) {
    json.Open('{').Key("id").Number(id++);
    if (!note.at.path.empty()) WriteLocation(note.at, json);
    WriteMessage("message", note.text, json);
    json.Close();
  }
}

// What was probably meant, where it is known what it would replace.
void WriteFix(const Diagnostic& diagnostic, support::JsonWriter& json) {
  const auto& excerpt = diagnostic.at.excerpt;
  const std::string* wanted = FirstMentioned(diagnostic);
  if (wanted == nullptr && diagnostic.entry) wanted = &*diagnostic.entry;
  if (!diagnostic.suggestion || !excerpt || wanted == nullptr || excerpt->meant() != *wanted)
    return;
  json.Key("fixes").Open('[').Open('{');
  WriteMessage("description", SuggestionText(diagnostic), json);
  json.Key("artifactChanges").Open('[').Open('{');
  WriteArtifact(diagnostic.at, json);
  json.Key("replacements").Open('[').Open('{');
  WriteRegion("deletedRegion", *excerpt, json);
  WriteMessage("insertedContent", *diagnostic.suggestion, json);
  for (int i = 0; i < 6; ++i) json.Close();
}

void WriteResult(const Diagnostic& diagnostic, support::JsonWriter& json) {
  json.Open('{').Key("ruleId").String(diagnostic.row->id);
  json.Key("level").String(WordOf(diagnostic.severity));
  WriteMessage("message", WholeText(diagnostic), json);
  if (!diagnostic.at.path.empty()) {
    json.Key("locations").Open('[').Open('{');
    WriteLocation(diagnostic.at, json);
    json.Close().Close();
  }
  std::size_t id = 0;
  json.Key("relatedLocations").Open('[');
  WriteRelated(diagnostic.notes, id, json);
  WriteRelated(diagnostic.included_from, id, json);
  json.Close();
  WriteFix(diagnostic, json);
  json.Close();
}

void WriteRules(const Report& report, support::JsonWriter& json) {
  std::map<std::string_view, const MessageRow*> rows;
  for (const Diagnostic& diagnostic : report.diagnostics)
    rows.emplace(diagnostic.row->id, diagnostic.row);

  json.Key("rules").Open('[');
  for (const auto& [id, row] : rows) {
    json.Open('{').Key("id").String(id);
    WriteMessage("shortDescription", row->summary, json);
    WriteMessage("fullDescription", row->explanation, json);
    json.Key("defaultConfiguration").Open('{').Key("level").String(WordOf(row->severity)).Close();
    json.Close();
  }
  json.Close();
}

}  // namespace

std::string SarifReport(const Report& report) {
  support::JsonWriter json;
  json.Open('{').Key("$schema").String(
      "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json");
  json.Key("version").String("2.1.0").Key("runs").Open('[').Open('{');
  json.Key("tool").Open('{').Key("driver").Open('{').Key("name").String("rux");
  json.Key("version").String(RUX_TOOL_VERSION);
  WriteRules(report, json);
  json.Close().Close();
  json.Key("invocations").Open('[').Open('{');
  json.Key("executionSuccessful").Bool(report.is_complete).Close().Close();
  json.Key("columnKind").String("unicodeCodePoints");
  json.Key("results").Open('[');
  for (const Diagnostic& diagnostic : report.diagnostics) WriteResult(diagnostic, json);
  return json.Close().Close().Close().Close().TakeText();
}

}  // namespace rux::diagnostics
