// textDocument/documentSymbol: the sections of a file and what they define.
#include <string>
#include <vector>

#include "assistance/outline.h"
#include "protocol/json.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/session.h"
#include "server/symbol_kinds.h"

namespace rux::server {
namespace {

using assistance::OutlineEntry;
using protocol::Json;

Json SymbolJson(const Asked& asked, const OutlineEntry& entry) {
  Json symbol = {{"name", entry.name},
                 {"detail", entry.detail},
                 {"kind", SymbolKindOf(entry.section, entry.space)},
                 {"range", RangeJson(asked, entry.range)},
                 {"selectionRange", RangeJson(asked, entry.name_range)}};
  for (const OutlineEntry& child : entry.children) {
    symbol["children"].push_back(SymbolJson(asked, child));
  }
  return symbol;
}

// For clients that show no trees.
void AddFlat(const Asked& asked, const std::string& uri, const OutlineEntry& entry,
             const std::string& container, Json& symbols) {
  symbols.push_back({{"name", entry.name},
                     {"kind", SymbolKindOf(entry.section, entry.space)},
                     {"containerName", container},
                     {"location", {{"uri", uri}, {"range", RangeJson(asked, entry.range)}}}});
  for (const OutlineEntry& child : entry.children) {
    AddFlat(asked, uri, child, entry.name, symbols);
  }
}

Json DocumentSymbolsOf(const Session& session, const Json& params) {
  const bool has_trees =
      session.client.can("textDocument", "documentSymbol", "hierarchicalDocumentSymbolSupport");
  Json symbols = Json::array();
  const std::vector<Asked> places = AskedAbout(session, params);
  if (places.empty()) return symbols;
  const Asked& asked = places.front();
  for (const OutlineEntry& entry : assistance::OutlineOf(asked.at.index, asked.at.file)) {
    if (has_trees) {
      symbols.push_back(SymbolJson(asked, entry));
    } else {
      AddFlat(asked, session.DocumentOf(params).uri(), entry, "", symbols);
    }
  }
  return symbols;
}

}  // namespace

Feature DocumentSymbols() {
  return {"documentSymbolProvider",
          true,
          {{"textDocument/documentSymbol", Timing::kWithMachines, DocumentSymbolsOf}}};
}

}  // namespace rux::server
