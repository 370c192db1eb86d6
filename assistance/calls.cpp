#include "assistance/calls.h"

#include <algorithm>
#include <vector>

#include "assistance/place.h"
#include "assistance/targets.h"
#include "index/index.h"
#include "index/records.h"

namespace rux::assistance {
namespace {

using index::Index;

constexpr index::Space kActions{language::SECTION_ACTION, language::ENTRY_NAME};

void AddCall(Id section, ByteRange place, std::vector<Calls>& calls) {
  const auto known = std::find_if(calls.begin(), calls.end(),
                                  [&](const Calls& each) { return each.section == section; });
  if (known == calls.end()) {
    calls.push_back({section, {place}});
  } else {
    known->places.push_back(place);
  }
}

}  // namespace

Id ActionAt(const Place& at) {
  for (const Id symbol : SymbolsAt(at)) {
    if (at.index.symbols()[symbol].space != kActions) continue;
    const Id taken = at.index.TakenDefinitionOf(symbol);
    if (taken != kNone) return at.index.definitions()[taken].section;
  }
  return kNone;
}

std::vector<Calls> CallersOf(const Index& index, Id action) {
  std::vector<Calls> calls;
  const Id name = index.DefinitionIn(action, language::ENTRY_NAME);
  if (name == kNone || index.definitions()[name].symbol == kNone) return calls;
  for (const Id id : index.ReferencesTo(index.definitions()[name].symbol)) {
    const index::Reference& reference = index.references()[id];
    AddCall(index.items()[reference.item].section, reference.name, calls);
  }
  return calls;
}

std::vector<Calls> CallsIn(const Index& index, Id section) {
  std::vector<Calls> calls;
  for (const index::ItemRecord& item : index.ItemsOf(section)) {
    for (const index::Reference& reference :
         index.ReferencesIn(static_cast<Id>(&item - index.items().data()))) {
      if (reference.space != kActions || reference.definition == kNone) continue;
      AddCall(index.definitions()[reference.definition].section, reference.name, calls);
    }
  }
  return calls;
}

}  // namespace rux::assistance
