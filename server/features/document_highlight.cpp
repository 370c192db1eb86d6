// textDocument/documentHighlight: the other places in a file that have the name at a place.
#include "assistance/highlights.h"
#include "protocol/json.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/session.h"

namespace rux::server {
namespace {

using protocol::Json;

// Numbers of the protocol.
constexpr int kRead = 2;
constexpr int kWrite = 3;

Json HighlightsOf(const Session& session, const Json& params) {
  OnceList highlights;
  for (const Asked& asked : AskedBy(session, params)) {
    for (const assistance::Highlight& each : assistance::HighlightsAt(asked.at)) {
      highlights.Add(
          {{"range", RangeJson(asked, each.range)}, {"kind", each.is_definition ? kWrite : kRead}});
    }
  }
  return highlights.Take();
}

}  // namespace

Feature DocumentHighlights() {
  return {"documentHighlightProvider",
          true,
          {{"textDocument/documentHighlight", Timing::kWithMachines, HighlightsOf}}};
}

}  // namespace rux::server
