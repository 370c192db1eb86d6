#include "assistance/targets.h"

#include <algorithm>
#include <vector>

#include "assistance/place.h"
#include "index/index.h"
#include "index/records.h"
#include "index/spot.h"
#include "ruxcomp/language/entries.h"

namespace rux::assistance {
namespace {

void Add(const index::Index& index, Id symbol, std::vector<Id>& symbols) {
  if (symbol == kNone || !IsName(index.symbols()[symbol])) return;
  if (std::find(symbols.begin(), symbols.end(), symbol) == symbols.end()) symbols.push_back(symbol);
}

}  // namespace

bool IsName(const index::Symbol& symbol) {
  return language::PayloadOf(symbol.space.entry) != language::PAYLOAD_STRINGLIST;
}

std::vector<Id> SymbolsAt(const Place& at) {
  const index::NamesAt names = index::FindNames(at.index, at.file, at.offset);
  std::vector<Id> symbols;
  for (const Id id : names.references) Add(at.index, at.index.references()[id].symbol, symbols);
  for (const Id id : names.definitions) Add(at.index, at.index.definitions()[id].symbol, symbols);
  return symbols;
}

std::vector<Id> SymbolsOfThingsAt(const Place& at) {
  std::vector<Id> symbols = SymbolsAt(at);
  const std::vector<Id> found = symbols;
  for (const Id symbol : found) {
    const language::EntryId entry = at.index.symbols()[symbol].space.entry;
    const Id taken = at.index.TakenDefinitionOf(symbol);
    if (taken == kNone) continue;
    if (entry != language::ENTRY_NAME && entry != language::ENTRY_ID) continue;
    const bool is_name = entry == language::ENTRY_NAME;
    const Id other = at.index.DefinitionIn(at.index.definitions()[taken].section,
                                           is_name ? language::ENTRY_ID : language::ENTRY_NAME);
    if (other != kNone) Add(at.index, at.index.definitions()[other].symbol, symbols);
  }
  return symbols;
}

}  // namespace rux::assistance
