// Static Analysis Results Interchange Format, version 2.1.0.
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "diagnostics/diagnostic.h"
#include "diagnostics/machine_form.h"
#include "diagnostics/report.h"
#include "findings/message_row.h"
#include "support/json.h"
#include "support/text_file.h"
#include "support/text_stream.h"
#include "support/uri.h"

namespace rux::diagnostics {
namespace {

using support::JsonArray;
using support::JsonObject;

void WriteMessage(const char* key, std::string_view text, JsonObject& json) {
  json.Object(key, [&](JsonObject& message) { message.Member("text", text); });
}

void WriteRegion(const char* key, const Excerpt& excerpt, JsonObject& json) {
  json.Object(key, [&](JsonObject& region) {
    region.Member("startLine", excerpt.line);
    region.Member("startColumn", excerpt.first_column);
    region.Member("endColumn", excerpt.end_column);
  });
}

void WriteArtifact(const Location& at, JsonObject& json) {
  json.Object("artifactLocation",
              [&](JsonObject& artifact) { artifact.Member("uri", support::UriOf(at.path)); });
}

// The members of a location, without its braces.
void WriteSarifLocation(const Location& at, JsonObject& json) {
  json.Object("physicalLocation", [&](JsonObject& location) {
    WriteArtifact(at, location);
    if (at.excerpt) {
      WriteRegion("region", *at.excerpt, location);
    } else if (at.line() != 0) {
      location.Object("region", [&](JsonObject& region) { region.Member("startLine", at.line()); });
    }
  });
}

// A list of one object.
template <class Fill>
void WriteOnly(const char* key, JsonObject& json, Fill fill) {
  json.Array(key, [&](JsonArray& list) { list.Object(fill); });
}

void WriteRelated(const Diagnostic& diagnostic, JsonObject& json) {
  json.Array("relatedLocations", [&](JsonArray& list) {
    std::size_t id = 0;
    for (const auto* notes : {&diagnostic.notes, &diagnostic.included_from}) {
      for (const Note& note : *notes) {
        list.Object([&](JsonObject& related) {
          related.Member("id", id++);
          if (!note.at.path.empty()) WriteSarifLocation(note.at, related);
          WriteMessage("message", note.text, related);
        });
      }
    }
  });
}

// Bytes that may be others than those that are meant.
void WriteBytes(const char* key, support::ByteRange range, JsonObject& json) {
  json.Object(key, [&](JsonObject& region) {
    region.Member("byteOffset", range.begin);
    region.Member("byteLength", range.end - range.begin);
  });
}

void WriteSarifFix(const Diagnostic& diagnostic, JsonObject& json) {
  const std::optional<Fix> found = FixOf(diagnostic);
  if (!found) return;
  WriteOnly("fixes", json, [&](JsonObject& fix) {
    if (diagnostic.suggestion) WriteMessage("description", SuggestionText(diagnostic), fix);
    WriteOnly("artifactChanges", fix, [&](JsonObject& change) {
      WriteArtifact(diagnostic.at, change);
      WriteOnly("replacements", change, [&](JsonObject& replacement) {
        diagnostic.fix ? WriteBytes("deletedRegion", found->range, replacement)
                       : WriteRegion("deletedRegion", *diagnostic.at.excerpt, replacement);
        WriteMessage("insertedContent", found->text, replacement);
      });
    });
  });
}

void WriteResult(JsonObject& json, const Diagnostic& diagnostic) {
  json.Member("ruleId", diagnostic.row->id);
  json.Member("level", WordOf(diagnostic.severity));
  WriteMessage("message", WholeText(diagnostic), json);
  if (!diagnostic.at.path.empty()) {
    WriteOnly("locations", json,
              [&](JsonObject& location) { WriteSarifLocation(diagnostic.at, location); });
  }
  WriteRelated(diagnostic, json);
  WriteSarifFix(diagnostic, json);
}

using RowsById = std::map<std::string_view, const MessageRow*>;

void WriteRule(JsonObject& json, const RowsById::value_type& by_id) {
  const MessageRow& row = *by_id.second;
  json.Member("id", row.id);
  WriteMessage("shortDescription", row.summary, json);
  WriteMessage("fullDescription", row.explanation, json);
  json.Object("defaultConfiguration", [&](JsonObject& settings) {
    settings.Member("level", WordOf(row.severity));
    if (row.level == ruxcomp::findings::Level::kStyle) settings.Member("enabled", false);
  });
  if (row.severity != Severity::kWarning) return;
  json.Object("properties", [&](JsonObject& properties) {
    properties.Array("tags", [&](JsonArray& tags) { tags.Item(WordOf(row.level)); });
  });
}

void WriteDriver(const Report& report, JsonObject& json) {
  RowsById rows;
  for (const MessageCount& count : report.by_message) {
    if (count.kept > 0) rows.emplace(count.row->id, count.row);
  }
  json.Member("name", "rux");
  json.Member("version", RUX_TOOL_VERSION);
  json.Objects("rules", rows, WriteRule);
}

void WriteInvocation(const Report& report, JsonObject& json) {
  WriteOnly("invocations", json, [&](JsonObject& invocation) {
    invocation.Member("executionSuccessful", report.is_complete);
    if (report.not_shown == 0) return;
    WriteOnly("toolExecutionNotifications", invocation, [&](JsonObject& notification) {
      notification.Member("level", "note");
      WriteMessage("message", NotShownText(report.not_shown), notification);
    });
  });
}

void WriteProperties(const Report& report, JsonObject& json) {
  if (report.properties.empty()) return;
  json.Object("properties", [&](JsonObject& properties) {
    for (const auto& [name, value] : report.properties) properties.Member(name, value);
  });
}

void AddResults(const Report& report, JsonArray& results) {
  for (const Diagnostic& diagnostic : report.diagnostics) {
    results.Object([&](JsonObject& json) { WriteResult(json, diagnostic); });
  }
}

// add_results(JsonArray&) is called before total(), which returns a report.
template <class Add, class Total>
void WriteLog(Add add_results, Total total, support::TextStream& out) {
  support::WriteJson(out, [&](JsonObject& json) {
    json.Member("$schema",
                "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/"
                "sarif-schema-2.1.0.json");
    json.Member("version", "2.1.0");
    WriteOnly("runs", json, [&](JsonObject& run) {
      run.Member("columnKind", "unicodeCodePoints");
      run.Array("results", add_results);
      const Report& report = total();
      WriteInvocation(report, run);
      WriteProperties(report, run);
      run.Object("tool", [&](JsonObject& tool) {
        tool.Object("driver", [&](JsonObject& driver) { WriteDriver(report, driver); });
      });
    });
  });
}

}  // namespace

void WriteSarifReport(const Report& report, support::TextStream& out) {
  const auto total = [one = &report]() -> const Report& { return *one; };
  WriteLog([&](JsonArray& results) { AddResults(report, results); }, total, out);
}

void WriteSarifPiece(const Report& report, support::TextStream& out) {
  constexpr std::size_t kDepth = 4;
  JsonArray results(out, kDepth);
  AddResults(report, results);
}

void WriteSarifReports(const Pieces& pieces, support::TextStream& out) {
  const auto add_results = [&](JsonArray& results) {
    pieces.add_all([&](std::string_view piece) { results.AddWritten(piece); });
  };
  WriteLog(add_results, pieces.total, out);
}

}  // namespace rux::diagnostics
