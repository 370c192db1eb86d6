#include "assistance/calls.h"

#include <algorithm>
#include <vector>

#include "assistance/place.h"
#include "assistance/targets.h"
#include "index/index.h"
#include "index/records.h"
#include "index/spot.h"

namespace rux::assistance {
namespace {

using index::Index;

constexpr index::Space kActions{language::SECTION_ACTION, language::ENTRY_NAME};

// The global that an item defines.
Id GlobalOf(const Index& index, Id item) {
  const Id section = index.items()[item].section;
  if (index.sections()[section].kind->source != language::SECTION_GLOBAL) return kNone;
  const auto definitions = index.DefinitionsIn(item);
  if (definitions.begin() == definitions.end() || definitions.begin()->symbol == kNone)
    return kNone;
  return static_cast<Id>(&*definitions.begin() - index.definitions().data());
}

void AddCall(Id section, Id global, ByteRange place, std::vector<Calls>& calls) {
  const auto known = std::find_if(calls.begin(), calls.end(), [&](const Calls& each) {
    return each.section == section && each.global == global;
  });
  if (known == calls.end()) {
    calls.push_back({section, global, {place}});
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
    AddCall(index.items()[reference.item].section, GlobalOf(index, reference.item), reference.name,
            calls);
  }
  return calls;
}

std::vector<Calls> CallsAt(const Place& at) {
  const Index& index = at.index;
  const index::Spot spot = index::SpotAt(index, at.file, at.offset);
  std::vector<Calls> calls;
  if (spot.section == kNone) return calls;
  const bool is_in_global = spot.item != kNone && GlobalOf(index, spot.item) != kNone;
  for (const index::ItemRecord& record : index.ItemsOf(spot.section)) {
    const auto item = static_cast<Id>(&record - index.items().data());
    if (is_in_global && item != spot.item) continue;
    for (const index::Reference& reference : index.ReferencesIn(item)) {
      if (reference.space != kActions || reference.definition == kNone) continue;
      AddCall(index.definitions()[reference.definition].section, kNone, reference.name, calls);
    }
  }
  return calls;
}

}  // namespace rux::assistance
