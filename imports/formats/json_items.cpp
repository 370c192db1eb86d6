#include "imports/formats/json_items.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "imports/board.h"
#include "imports/names.h"
#include "losses/ledger.h"
#include "settings/json_file.h"

namespace rux::imports {
namespace {

using settings::JsonMember;
using settings::JsonValue;

// A key is in the place of each value below it: what is longer is cut.
std::string_view Cut(std::string_view key) { return key.substr(0, kMostNameBytes); }

// As a part of a JSON pointer has it.
std::string PointerPart(std::string_view key) {
  std::string part;
  for (const char c : Cut(key)) {
    if (c == '~')
      part += "~0";
    else if (c == '/')
      part += "~1";
    else
      part += c;
  }
  return part;
}

// Calls visit(key, child) for what the value holds.
template <class Visit>
void ForEachChild(const JsonValue& value, Visit visit) {
  for (const JsonMember& member : value.members) visit(member.key, member.value);
  for (std::size_t i = 0; i < value.items.size(); ++i) visit(std::to_string(i), value.items[i]);
}

}  // namespace

bool IsLeaf(const JsonValue& value) { return value.members.empty() && value.items.empty(); }

const JsonValue* Member(const JsonValue& object, std::string_view key) {
  for (const JsonMember& member : object.members) {
    if (member.key == key) return &member.value;
  }
  return nullptr;
}

JsonItems::JsonItems(const JsonValue& root, losses::Ledger& ledger) : ledger_(ledger) {
  Note(root, "");
}

void JsonItems::Note(const JsonValue& value, std::string pointer) {
  ForEachChild(value, [&](const std::string& key, const JsonValue& child) {
    Note(child, pointer + '/' + PointerPart(key));
  });
  losses::ItemId item = losses::kNoItem;
  if (IsLeaf(value)) item = ledger_.Note({value.line, pointer, value.text});
  places_.emplace(&value, Place{std::move(pointer), item, false});
}

Text JsonItems::Take(const JsonValue& leaf) {
  Place& place = places_.at(&leaf);
  place.is_taken = true;
  return {leaf.text, place.item};
}

Text JsonItems::Take(const JsonValue& object, std::string_view key) {
  const JsonValue* const member = Member(object, key);
  return member != nullptr && IsLeaf(*member) ? Take(*member) : Text{};
}

void JsonItems::TakeRest(const JsonValue& value, const std::string& prefix,
                         std::vector<Property>& properties) {
  if (IsLeaf(value)) {
    if (!places_.at(&value).is_taken) properties.push_back({prefix, Take(value)});
    return;
  }
  ForEachChild(value, [&](const std::string& key, const JsonValue& child) {
    std::string path = prefix.empty() ? "" : prefix + '_';
    TakeRest(child, path.append(Cut(key)), properties);
  });
}

void JsonItems::Drop(const JsonValue& value, losses::Reason reason) {
  if (IsLeaf(value) && !places_.at(&value).is_taken) ledger_.Dropped(Take(value).item, reason);
  ForEachChild(value, [&](const std::string&, const JsonValue& child) { Drop(child, reason); });
}

}  // namespace rux::imports
