// What a machine consists of, and what refers to what in it.
#ifndef BROWSE_RELATIONS_H_
#define BROWSE_RELATIONS_H_

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <unordered_set>
#include <utility>
#include <vector>

#include "compiled/datum.h"
#include "machine/load.h"
#include "machine/machine.h"
#include "machine/place.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model.h"
#include "support/json.h"

namespace rux::browse {

namespace language = ruxcomp::language;

// A section; or an entry of one, where entries have names that others refer to: a global, a
// repeater, a defined word.
struct Thing {
  const language::SectionKind* kind;
  std::optional<std::string> name = {};
  std::optional<std::uint32_t> id = {};
  std::string key = {};                      // of an entry; empty: a section
  std::optional<std::uint32_t> number = {};  // that a word is
  std::optional<machine::Place> place = {};  // where a script says it, if that is known

  // "SENSOR #0x101 INLET", "GLOBAL G_CPU", "DEFINE TACH = 65056 (0xFE20)"
  std::string Title() const;
};

// An entry of one thing that refers to another. Things are given by their numbers.
struct Link {
  std::size_t from;
  std::size_t to;
  std::string key;  // of the entry
  // What the entry refers to is where the thing belongs, or a list of what belongs to it, rather
  // than what it uses.
  bool is_membership;
  std::optional<machine::Place> place;
};

class Relations {
 public:
  Relations() = default;
  Relations(Relations&&) noexcept = default;
  Relations& operator=(Relations&&) noexcept = default;

  std::size_t Add(Thing thing);
  // Does nothing when the entry refers to that thing already. The links of an entry follow each
  // other.
  void Add(Link link);

  const std::vector<Thing>& things() const { return things_; }
  // The links of a thing to others, and of others to it.
  const std::vector<const Link*>& From(std::size_t thing) const { return from_[thing]; }
  const std::vector<const Link*>& To(std::size_t thing) const { return to_[thing]; }

 private:
  std::vector<Thing> things_;
  std::deque<Link> links_;
  std::vector<std::vector<const Link*>> from_;  // by things
  std::vector<std::vector<const Link*>> to_;
  std::unordered_set<std::size_t> known_;  // to what the entry of the last link refers
};

// Of a script with all that it includes, a debug meta file, or a meta file; also of a git revision.
// Only a meta file has no words. A script need not be correct: what it refers to without defining
// it, is left out. Throws a Failure for a file that cannot be read.
Relations ReadRelations(const std::string& name, const machine::LoadOptions& options);

// Of a machine, without words.
class MachineRelations : public Relations {
 public:
  explicit MachineRelations(const machine::Machine& machine);

  // Where a thing is in the machine: kind, ordinal of the section, ordinal of the entry or kWhole.
  using Position = std::tuple<const language::SectionKind*, std::size_t, std::size_t>;
  static constexpr std::size_t kWhole = static_cast<std::size_t>(-1);
  const Position& PositionOf(std::size_t thing) const { return positions_[thing]; }
  // Of the thing that is there.
  std::size_t NumberAt(const Position& position) const { return numbers_.at(position); }
  // What a part of a value refers to: by name, or by ID when the entry gives the IDs of that kind
  // (null: it gives none). None when it is a plain value.
  std::optional<std::size_t> NumberFor(const ruxcomp::Model& model,
                                       const language::SectionKind* ids,
                                       const compiled::Datum& datum) const;
  // Of the first entry with that key in sections of the kind; none when there is none.
  std::optional<std::size_t> FindKey(const language::SectionKind* kind,
                                     const std::string& key) const;

 private:
  class Reader;
  std::size_t AddAt(const Position& position, Thing thing);

  std::map<Position, std::size_t> numbers_;
  std::vector<Position> positions_;  // by things
  std::map<std::pair<const language::SectionKind*, std::string>, std::size_t> keys_;
};

// Members "kind", "name", "id", "key", "number", "place" of those that are known.
void WriteThing(support::JsonObject& json, const Thing& thing);
// "  board.rux:12"; empty when it is not known.
std::string PlaceText(const std::optional<machine::Place>& place);

}  // namespace rux::browse

#endif  // BROWSE_RELATIONS_H_
