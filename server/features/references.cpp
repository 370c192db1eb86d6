// textDocument/references: what refers to the name at a place, in all machines that have it.
#include "assistance/references.h"

#include "assistance/place.h"
#include "protocol/json.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/session.h"

namespace rux::server {
namespace {

using protocol::Json;

Json ReferencesOf(const Session& session, const Json& params) {
  const bool with_definitions = protocol::Has(params, "context", "includeDeclaration");
  OnceList locations;
  AskEverywhere(session, AskedBy(session, params), [&](const Asked& asked) {
    for (const assistance::Location& at : assistance::ReferencesAt(asked.at, with_definitions)) {
      locations.Add(LocationJson(session, asked.machine, at));
    }
    return assistance::ReferencesAt(asked.at, true);
  });
  return locations.Take();
}

}  // namespace

Feature References() {
  return {"referencesProvider",
          true,
          {{"textDocument/references", Timing::kWithMachines, ReferencesOf}}};
}

}  // namespace rux::server
