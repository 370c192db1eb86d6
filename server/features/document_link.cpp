// textDocument/documentLink: the files that a script includes.
#include "analysis/analysis.h"
#include "protocol/json.h"
#include "server/feature.h"
#include "server/finding_json.h"
#include "server/session.h"
#include "workspace/documents.h"

namespace rux::server {
namespace {

using protocol::Json;

Json Links(const Session& session, const Json& params) {
  Json links = Json::array();
  for (const auto& include : session.analysis.IncludesIn(session.DocumentOf(params).whole_name())) {
    links.push_back({{"range", include.at->range}, {"target", UriOf(session, *include.file)}});
  }
  return links;
}

}  // namespace

Feature DocumentLinks() {
  return {"documentLinkProvider",
          {{"resolveProvider", false}},
          {{"textDocument/documentLink", Timing::kWithFindings, Links}}};
}

}  // namespace rux::server
