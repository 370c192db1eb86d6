#include "assistance/definition.h"

#include <vector>

#include "assistance/place.h"
#include "index/index.h"
#include "index/spot.h"

namespace rux::assistance {

std::vector<Location> DefinitionsAt(const Place& at) {
  const index::Index& index = at.index;
  const index::NamesAt names = index::FindNames(index, at.file, at.offset);
  std::vector<Location> found;
  for (const Id id : names.references) {
    const Id definition = index.references()[id].definition;
    if (definition != kNone) AddOnce(found, LocationOf(index.definitions()[definition]));
  }
  if (!found.empty()) return found;
  for (const Id id : names.definitions) AddOnce(found, LocationOf(index.definitions()[id]));
  return found;
}

}  // namespace rux::assistance
