#include "server/publisher.h"

#include <set>
#include <string>
#include <utility>

#include "protocol/json.h"
#include "server/file_report.h"
#include "server/session.h"

namespace rux::server {
namespace {

using protocol::Json;

}  // namespace

void Publisher::Send(const Session& session, const Published& published) {
  Json params = {{"uri", published.uri}, {"diagnostics", published.diagnostics}};
  if (published.version) params["version"] = *published.version;
  session.client.Notify("textDocument/publishDiagnostics", params);
}

void Publisher::LogNew(const Session& session, const std::set<std::string>& failures) {
  for (const std::string& failure : failures) {
    if (logged_.insert(failure).second) session.client.Log(failure);
  }
}

Publisher::Published Publisher::StateOf(const Session& session, const std::string& whole_name) {
  FileReport report = ReportOf(session, whole_name);
  LogNew(session, report.failures);
  return {std::move(report.uri), report.version, std::move(report.diagnostics)};
}

void Publisher::Publish(const Session& session, const std::string& whole_name) {
  Published now = StateOf(session, whole_name);
  const auto known = published_.find(whole_name);
  const Published before = known == published_.end() ? Published() : known->second;
  if (now.uri.empty()) now.uri = before.uri;
  const bool has_moved = !before.uri.empty() && before.uri != now.uri;
  if (has_moved && !before.diagnostics.empty()) Send(session, {before.uri, {}, Json::array()});
  const bool is_new_version = now.version && (has_moved || before.version != now.version);
  const Json& shown = has_moved ? Json::array() : before.diagnostics;
  if (is_new_version || now.diagnostics != shown) Send(session, now);
  if (now.version || !now.diagnostics.empty()) {
    published_.insert_or_assign(whole_name, std::move(now));
  } else {
    published_.erase(whole_name);
  }
}

}  // namespace rux::server
