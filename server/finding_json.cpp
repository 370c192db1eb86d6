#include "server/finding_json.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string>

#include "analysis/analysis.h"
#include "analysis/findings.h"
#include "diagnostics/report.h"
#include "findings/message_row.h"
#include "protocol/json.h"
#include "protocol/positions.h"
#include "server/explanation.h"
#include "server/session.h"
#include "support/safe_text.h"
#include "support/uri.h"
#include "workspace/documents.h"

namespace rux::server {
namespace {

using protocol::Json;

constexpr const char* kSource = "rux";

// Numbers of the protocol.
constexpr int kUnnecessary = 1;
int SeverityOf(ruxcomp::findings::Severity severity) {
  constexpr int kNumbers[] = {3, 2, 1};  // information, warning, error
  return kNumbers[static_cast<std::size_t>(severity)];
}

bool CanFade(const Session& session) {
  const Json& tags = session.client.capability_of_findings("tagSupport", "valueSet");
  return tags.is_array() && std::find(tags.begin(), tags.end(), kUnnecessary) != tags.end();
}

Json RelatedOf(const Session& session, const analysis::Analysis::Located& located) {
  Json related = Json::array();
  for (const analysis::Related& each : located.finding->related) {
    const std::string uri = UriOf(session, located.machine->files[each.at.file]);
    related.push_back(
        {{"location", {{"uri", uri}, {"range", each.at.range}}}, {"message", each.text}});
  }
  return related;
}

Json AtTheTop(ruxcomp::findings::Severity severity, const std::string& text) {
  return {{"range", protocol::Range()},
          {"severity", SeverityOf(severity)},
          {"source", kSource},
          {"message", text}};
}

// With a link to what explains it, for clients that show links.
void AddId(const Session& session, const std::string& id, Json& json) {
  json["code"] = id;
  if (session.client.capability_of_findings("codeDescriptionSupport") != true) return;
  const std::string explanation = ExplanationOf(id);
  if (!explanation.empty()) json["codeDescription"] = {{"href", explanation}};
}

// For clients that show no other places.
std::string TextWithPlaces(const analysis::Analysis::Located& located) {
  std::string text;
  for (const analysis::Related& each : located.finding->related) {
    text += fmt::format("\n{} ({}:{})", each.text,
                        support::SafeText(located.machine->files[each.at.file].path),
                        each.at.range.start.line + 1);
  }
  return text;
}

}  // namespace

std::string UriOf(const Session& session, const analysis::File& file) {
  const workspace::Document* document = session.documents.FindFile(file.whole_name);
  return document != nullptr ? document->uri() : support::UriOf(file.path);
}

Json DiagnosticOf(const Session& session, const analysis::Analysis::Located& located) {
  const analysis::Finding& finding = *located.finding;
  const auto severity = static_cast<ruxcomp::findings::Severity>(finding.severity);
  Json json = {
      {"range", finding.at.range}, {"severity", SeverityOf(severity)}, {"source", kSource}};
  if (!finding.id.empty()) AddId(session, finding.id, json);
  std::string text = finding.text;
  if (!located.label.empty()) text += '\n' + support::SafeText(located.label);
  if (session.client.capability_of_findings("relatedInformation") == true) {
    if (!finding.related.empty()) json["relatedInformation"] = RelatedOf(session, located);
  } else {
    text += TextWithPlaces(located);
  }
  json["message"] = text;
  // What is not used can be deleted: clients show it faded.
  if (finding.is_about_unused && CanFade(session)) json["tags"] = Json::array({kUnnecessary});
  return json;
}

Json DiagnosticOfFailure(const std::string& failure) {
  return AtTheTop(ruxcomp::findings::Severity::kError, support::SafeText(failure));
}

Json DiagnosticOfRest(std::size_t count) {
  return AtTheTop(ruxcomp::findings::Severity::kNote, diagnostics::NotShown(count));
}

}  // namespace rux::server
