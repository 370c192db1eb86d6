#include "page/bus_accesses.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "browse/relations.h"
#include "compiled/datum.h"
#include "inspect/entry_value.h"
#include "machine/value.h"
#include "page/contents.h"
#include "page/place_term.h"
#include "ruxcomp/language/values.h"
#include "ruxcomp/model/handles.h"

namespace rux::page {
namespace {

using language::Shape;

const machine::EntryPart* FindPart(const machine::EntryValue& value, std::string_view name) {
  for (const machine::EntryPart& part : value.parts) {
    if (part.name == name) return &part;
  }
  return nullptr;
}

bool IsAccess(const machine::EntryValue& value) {
  if (!value.type) return false;
  const Shape shape = language::FindValueType(*value.type).shape;
  return shape == Shape::kBus || shape == Shape::kBusArgs;
}

class AccessReader {
 public:
  explicit AccessReader(const Contents& contents) : contents_(contents) {}

  void Read(Thing thing) {
    const std::vector<ruxcomp::Entry> entries = contents_.EntriesOf(thing);
    std::optional<Steps> steps;
    for (const ruxcomp::Entry& entry : entries) {
      if (!IsValue(entry)) continue;
      const machine::EntryValue value = machine::ValueOf(entry);
      if (!IsAccess(value)) continue;
      if (!steps) steps.emplace(entries, contents_.SectionOf(thing));
      Place place;
      for (const char* name : kPlaceParts) {
        const machine::EntryPart* part = FindPart(value, name);
        const bool is_known = part != nullptr && !part->items.empty();
        place.push_back(is_known ? steps->TermOf(part->items.front(), part->is_address)
                                 : PlaceTerm{});
      }
      const bool is_write = language::FindValueType(*value.type).shape == Shape::kBusArgs;
      Follow(place, is_write, thing, std::nullopt, 0);
    }
  }

  std::map<BusAccess, std::set<Thing>> Take() { return std::move(accesses_); }

 private:
  using Place = std::vector<PlaceTerm>;

  // So that the cost stays within a part of the machine.
  static constexpr std::size_t kMostCalls = 1000;  // of an action
  static constexpr std::size_t kMostFollowed = 4000;
  static constexpr int kMostDepth = 4;

  // To the calls of the action, as far as those say where the access goes.
  void Follow(const Place& place, bool is_write, Thing thing, std::optional<Thing> via, int depth) {
    bool is_passed = false;
    if (HasArgument(place) && depth < kMostDepth && contents_.Is(thing, language::SECTION_ACTION)) {
      const std::vector<const browse::Link*>& calls = contents_.relations().To(thing);
      const bool is_within = calls.size() <= kMostCalls && followed_ <= kMostFollowed;
      for (std::size_t i = 0; is_within && i < calls.size(); ++i) {
        ++followed_;
        const std::vector<compiled::Datum> arguments = ArgumentsOf(*calls[i]);
        Place passed = place;
        if (!PassAll(arguments, FirstArgumentOf(thing), passed)) continue;
        is_passed = true;
        Follow(passed, is_write, calls[i]->from, via.value_or(thing), depth + 1);
      }
    }
    if (!is_passed) Add(place, is_write, thing, via);
  }

  // Of an action, by what calls it in the end.
  void Add(const Place& place, bool is_write, Thing thing, std::optional<Thing> via) {
    std::vector<Thing> users;
    if (contents_.Is(thing, language::SECTION_ACTION)) {
      for (const Thing user : contents_.UsersOf(thing)) {
        if (!contents_.Is(user, language::SECTION_ACTION)) users.push_back(user);
      }
    }
    BusAccess access{{}, is_write, users.empty() ? via : via.value_or(thing)};
    for (const PlaceTerm& part : place) access.place.push_back(TextOf(part));
    std::set<Thing>& known = accesses_[access];
    known.insert(users.begin(), users.end());
    if (users.empty()) known.insert(thing);
  }

  static bool HasArgument(const Place& place) {
    return std::any_of(place.begin(), place.end(),
                       [](const PlaceTerm& part) { return ArgumentIn(part).has_value(); });
  }

  // ARG1, but for actions that use ARG0.
  std::uint32_t FirstArgumentOf(Thing action) {
    const auto [known, is_new] = first_arguments_.try_emplace(action, 1);
    if (!is_new) return known->second;
    for (const ruxcomp::Entry& entry : contents_.EntriesOf(action)) {
      if (!IsValue(entry)) continue;
      for (const compiled::Datum& item : inspect::ItemsOf(machine::ValueOf(entry))) {
        if (ArgumentIn(item) == std::uint32_t{0}) known->second = 0;
      }
    }
    return known->second;
  }

  std::vector<compiled::Datum> ArgumentsOf(const browse::Link& call) const {
    const ruxcomp::Section section = contents_.SectionOf(call.from);
    for (const ruxcomp::Entry& entry : contents_.EntriesOf(call.from)) {
      if (!IsValue(entry) || machine::KeyOf(section, entry) != call.key) continue;
      const machine::EntryValue value = machine::ValueOf(entry);
      const machine::EntryPart* part = FindPart(value, "Args");
      return part == nullptr ? std::vector<compiled::Datum>() : part->items;
    }
    return {};
  }

  // Whether the call passes all arguments of the place.
  static bool PassAll(const std::vector<compiled::Datum>& arguments, std::uint32_t first,
                      Place& place) {
    return std::all_of(place.begin(), place.end(),
                       [&](PlaceTerm& part) { return Pass(arguments, first, part); });
  }

  const Contents& contents_;
  std::map<BusAccess, std::set<Thing>> accesses_;
  std::map<Thing, std::uint32_t> first_arguments_;
  std::size_t followed_ = 0;
};

}  // namespace

bool BusAccess::operator<(const BusAccess& other) const {
  for (std::size_t i = 0; i < place.size() && i < other.place.size(); ++i) {
    const std::string& own = place[i];
    const std::string& text = other.place[i];
    if (own != text) return std::make_pair(own.size(), own) < std::make_pair(text.size(), text);
  }
  return std::tie(is_write, via) < std::tie(other.is_write, other.via);
}

std::map<BusAccess, std::set<Thing>> BusAccessesOf(const Contents& contents) {
  AccessReader reader(contents);
  for (Thing thing = 0; thing < contents.relations().things().size(); ++thing) reader.Read(thing);
  return reader.Take();
}

}  // namespace rux::page
