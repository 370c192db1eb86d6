// textDocument/hover: what the text under the pointer is.
#include "assistance/hover.h"

#include <optional>

#include "protocol/json.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/session.h"

namespace rux::server {
namespace {

using protocol::Json;

// The first machine that knows something: what is common to all is the same there.
Json HoverOf(const Session& session, const Json& params) {
  for (const Asked& asked : AskedBy(session, params)) {
    const std::optional<assistance::Hover> hover = assistance::HoverAt(asked.at);
    if (!hover) continue;
    return {{"contents",
             session.client.MarkupOf(hover->markdown, "textDocument", "hover", "contentFormat")},
            {"range", RangeJson(asked, hover->range)}};
  }
  return nullptr;
}

}  // namespace

Feature Hovers() {
  return {"hoverProvider", true, {{"textDocument/hover", Timing::kWithMachines, HoverOf}}};
}

}  // namespace rux::server
