// textDocument/definition: where the name at a place is defined.
#include "assistance/definition.h"

#include "assistance/place.h"
#include "protocol/json.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/session.h"

namespace rux::server {
namespace {

using protocol::Json;

Json DefinitionsOf(const Session& session, const Json& params) {
  OnceList locations;
  for (const Asked& asked : AskedBy(session, params)) {
    for (const assistance::Location& at : assistance::DefinitionsAt(asked.at)) {
      locations.Add(LocationJson(session, asked.machine, at));
    }
  }
  return locations.Take();
}

}  // namespace

Feature Definitions() {
  return {"definitionProvider",
          true,
          {{"textDocument/definition", Timing::kWithMachines, DefinitionsOf}}};
}

}  // namespace rux::server
