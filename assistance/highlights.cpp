#include "assistance/highlights.h"

#include <vector>

#include "assistance/place.h"
#include "assistance/targets.h"
#include "index/index.h"
#include "index/records.h"

namespace rux::assistance {

std::vector<Highlight> HighlightsAt(const Place& at) {
  const index::Index& index = at.index;
  std::vector<Highlight> found;
  for (const Id symbol : SymbolsAt(at)) {
    for (const Id id : index.DefinitionsOf(symbol)) {
      const index::Definition& definition = index.definitions()[id];
      if (definition.file == at.file) found.push_back({definition.name, true});
    }
    for (const Id id : index.ReferencesTo(symbol)) {
      const index::Reference& reference = index.references()[id];
      if (reference.file == at.file) found.push_back({reference.name, false});
    }
  }
  return found;
}

}  // namespace rux::assistance
