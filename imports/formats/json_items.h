// The items of a source in JSON: its values that hold no others.
#ifndef IMPORTS_FORMATS_JSON_ITEMS_H_
#define IMPORTS_FORMATS_JSON_ITEMS_H_

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "imports/board.h"
#include "losses/ledger.h"
#include "settings/json_file.h"

namespace rux::imports {

// Notes all of them when it is made, under their JSON pointers, and hands out each once: what is
// left of an object in the end becomes properties.
class JsonItems {
 public:
  // The root must outlive the items and stay where it is.
  JsonItems(const settings::JsonValue& root, losses::Ledger& ledger);

  const std::string& PointerOf(const settings::JsonValue& value) const {
    return places_.at(&value).pointer;
  }

  // The member's text and item, which are taken; empty when the object has no such member or it is
  // an object or an array.
  Text Take(const settings::JsonValue& object, std::string_view key);
  Text Take(const settings::JsonValue& leaf);
  // All that is not taken yet in the value; `prefix` comes before the keys, which have an
  // underscore between their parts.
  void TakeRest(const settings::JsonValue& value, const std::string& prefix,
                std::vector<Property>& properties);
  // All in the value that is not taken is dropped for that reason.
  void Drop(const settings::JsonValue& value, losses::Reason reason);

 private:
  struct Place {
    std::string pointer;
    losses::ItemId item;  // of a leaf
    bool is_taken;
  };

  void Note(const settings::JsonValue& value, std::string pointer);

  losses::Ledger& ledger_;
  std::unordered_map<const settings::JsonValue*, Place> places_;
};

// The member of an object; null: none, or not an object.
const settings::JsonValue* Member(const settings::JsonValue& object, std::string_view key);

bool IsLeaf(const settings::JsonValue& value);

}  // namespace rux::imports

#endif  // IMPORTS_FORMATS_JSON_ITEMS_H_
