#include "server/refresher.h"

#include <fmt/format.h>

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "protocol/message.h"
#include "server/session.h"
#include "workspace/documents.h"

namespace rux::server {

void Refresher::Ask(const Session& session, const char* capability, const char* method) {
  if (!session.client.can("workspace", capability, "refreshSupport")) return;
  session.client.Send(protocol::Request(fmt::format("refresh-{}", ++requests_), method, nullptr));
}

// After a change of its own, a client asks anyway. What is known about a document may come later
// than what is known about others: its version counts from then on.
bool Refresher::HasUnchangedDocument(const Session& session, const std::set<std::string>& changed) {
  bool has_unchanged = false;
  std::map<std::string, std::int64_t> versions;
  for (const auto& [uri, document] : session.documents.all()) {
    const auto before = versions_.find(uri);
    const bool is_known = before != versions_.end();
    if (changed.count(document->whole_name()) != 0) {
      has_unchanged = has_unchanged || (is_known && before->second == document->version());
      versions.emplace(uri, document->version());
    } else if (is_known) {
      versions.insert(*before);
    }
  }
  versions_ = std::move(versions);
  return has_unchanged;
}

void Refresher::Update(const Session& session, const std::set<std::string>& changed) {
  if (changed.empty()) return;
  if (session.client.asks_for_findings()) {
    Ask(session, "diagnostics", "workspace/diagnostic/refresh");
  }
  if (!HasUnchangedDocument(session, changed)) return;
  Ask(session, "codeLens", "workspace/codeLens/refresh");
  Ask(session, "inlayHint", "workspace/inlayHint/refresh");
  Ask(session, "semanticTokens", "workspace/semanticTokens/refresh");
}

}  // namespace rux::server
