// workspace/symbol: names of all machines that open documents are a part of.
#include <cstddef>
#include <string>

#include "analysis/reading.h"
#include "assistance/outline.h"
#include "protocol/json.h"
#include "protocol/params.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/session.h"
#include "server/symbol_kinds.h"

namespace rux::server {
namespace {

using protocol::Json;

// Of a machine: whoever looks for one writes more of it.
constexpr std::size_t kMostSymbols = 1000;

Json WorkspaceSymbolsOf(const Session& session, const Json& params) {
  const auto query = protocol::Required<std::string>(params, "query");
  OnceList symbols;
  for (const analysis::Reading* machine : session.analysis.AllReadings()) {
    for (const assistance::FoundSymbol& found :
         assistance::FindSymbols(machine->index(), query, kMostSymbols)) {
      symbols.Add({{"name", found.name},
                   {"kind", SymbolKindOf(found.space.section, found.space)},
                   {"containerName", found.container},
                   {"location", LocationJson(session, *machine, found.at)}});
    }
  }
  return symbols.Take();
}

}  // namespace

Feature WorkspaceSymbols() {
  return {"workspaceSymbolProvider",
          true,
          {{"workspace/symbol", Timing::kWithMachines, WorkspaceSymbolsOf}}};
}

}  // namespace rux::server
