#include "assistance/references.h"

#include <vector>

#include "assistance/place.h"
#include "assistance/targets.h"
#include "index/index.h"

namespace rux::assistance {

std::vector<Location> ReferencesAt(const Place& at, bool with_definitions) {
  const index::Index& index = at.index;
  std::vector<Location> found;
  for (const Id symbol : SymbolsOfThingsAt(at)) {
    if (with_definitions) {
      for (const Id id : index.DefinitionsOf(symbol)) {
        AddOnce(found, LocationOf(index.definitions()[id]));
      }
    }
    for (const Id id : index.ReferencesTo(symbol))
      found.push_back(LocationOf(index.references()[id]));
  }
  return found;
}

}  // namespace rux::assistance
