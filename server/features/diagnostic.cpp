// textDocument/diagnostic, workspace/diagnostic: what is found, for clients that ask for it.
#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "protocol/json.h"
#include "protocol/params.h"
#include "server/client.h"
#include "server/feature.h"
#include "server/file_report.h"
#include "server/session.h"

namespace rux::server {
namespace {

using protocol::Json;

// The same for the same findings on every machine: FNV-1a.
std::string IdOf(const Json& diagnostics) {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char c : protocol::TextOf(diagnostics)) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
  }
  return std::to_string(hash);
}

Json ReportJson(const FileReport& report, const Json& previous) {
  const std::string id = IdOf(report.diagnostics);
  if (previous == id) return {{"kind", "unchanged"}, {"resultId", id}};
  return {{"kind", "full"}, {"resultId", id}, {"items", report.diagnostics}};
}

Json FileDiagnostics(const Session& session, const Json& params) {
  const std::string& name = session.DocumentOf(params).whole_name();
  return ReportJson(ReportOf(session, name), protocol::At(params, "previousResultId"));
}

// A client that takes parts is sent one for each file, and nothing more at the end.
Json InParts(const Session& session, const Json& token, Json items) {
  if (token.is_null()) return {{"items", std::move(items)}};
  for (Json& item : items) {
    session.client.Notify(
        "$/progress", {{"token", token}, {"value", {{"items", Json::array({std::move(item)})}}}});
  }
  return {{"items", Json::array()}};
}

// Of files that the client has findings of and that are in no machine any more, there are none.
Json WorkspaceDiagnostics(const Session& session, const Json& params) {
  std::map<std::string, Json> previous;
  const Json& known = protocol::At(params, "previousResultIds");
  if (known.is_array()) {
    for (const Json& each : known) {
      previous[protocol::Required<std::string>(each, "uri")] =
          protocol::Required<std::string>(each, "value");
    }
  }
  std::map<std::string, FileReport> reports;
  for (const auto& [uri, id] : previous) reports[uri].uri = uri;
  for (const std::string& name : session.analysis.AllFiles()) {
    FileReport report = ReportOf(session, name);
    if (!report.uri.empty()) reports[report.uri] = report;
  }
  Json items = Json::array();
  for (const auto& [uri, report] : reports) {
    Json item = ReportJson(report, previous[uri]);
    item["uri"] = uri;
    item["version"] = report.version ? Json(*report.version) : Json();
    items.push_back(std::move(item));
  }
  return InParts(session, protocol::At(params, "partialResultToken"), std::move(items));
}

bool AsksForFindings(const Client& client) { return client.asks_for_findings(); }

}  // namespace

Feature Diagnostics() {
  return {"diagnosticProvider",
          {{"interFileDependencies", true}, {"workspaceDiagnostics", true}},
          {{"textDocument/diagnostic", Timing::kWithFindings, FileDiagnostics},
           {"workspace/diagnostic", Timing::kWithFindings, WorkspaceDiagnostics}},
          AsksForFindings};
}

}  // namespace rux::server
