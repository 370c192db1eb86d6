#include "machine/place.h"

#include <optional>
#include <string>

#include "support/json.h"
#include "support/safe_text.h"

namespace rux::machine {

std::string Place::SafeText() const {
  return support::SafePath(File()) + ':' + std::to_string(line);
}

void WritePlace(support::JsonObject& json, const std::optional<Place>& place) {
  if (!place) return;
  json.Object("place", [&](support::JsonObject& object) {
    object.Member("file", place->File());
    object.Member("line", place->line);
  });
}

}  // namespace rux::machine
