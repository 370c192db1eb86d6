#include "browse/relations.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "machine/place.h"
#include "support/json.h"
#include "support/number_text.h"
#include "support/safe_text.h"

namespace rux::browse {

std::string Thing::Title() const {
  std::string text = kind->keyword;
  if (id) text += ' ' + support::IdText(*id);
  if (name) text += ' ' + support::NameText(*name);
  if (!key.empty()) text += ' ' + support::SafeText(key);
  if (number) text += " = " + support::NumberText(*number);
  return text;
}

std::size_t Relations::Add(Thing thing) {
  things_.push_back(std::move(thing));
  from_.emplace_back();
  to_.emplace_back();
  return things_.size() - 1;
}

void Relations::Add(Link link) {
  const bool is_of_last =
      !links_.empty() && links_.back().from == link.from && links_.back().key == link.key;
  if (!is_of_last) known_.clear();
  if (!known_.insert(link.to).second) return;
  const Link& added = links_.emplace_back(std::move(link));
  from_[added.from].push_back(&added);
  to_[added.to].push_back(&added);
}

std::string PlaceText(const std::optional<machine::Place>& place) {
  return place ? "  " + place->SafeText() : "";
}

void WriteThing(support::JsonObject& json, const Thing& thing) {
  json.Member("kind", thing.kind->keyword);
  if (thing.name) json.Member("name", *thing.name);
  if (thing.id) json.Member("id", *thing.id);
  if (!thing.key.empty()) json.Member("key", thing.key);
  if (thing.number) json.Member("number", *thing.number);
  machine::WritePlace(json, thing.place);
}

}  // namespace rux::browse
