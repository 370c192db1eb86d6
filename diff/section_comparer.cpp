#include "diff/section_comparer.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "diff/change.h"
#include "diff/classes.h"
#include "diff/kind_matcher.h"
#include "diff/limits.h"
#include "diff/matching.h"
#include "diff/order.h"
#include "diff/placed.h"
#include "inspect/entry_value.h"
#include "machine/value.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"

namespace rux::diff {
namespace {

// An entry whose name has an index is known by that name, any other by its identifier.
bool AreSameKeys(const ruxcomp::Entry& before, const ruxcomp::Entry& after) {
  if (!before.has_name() && !after.has_name()) return before.identifier() == after.identifier();
  return language::ClassOf(before.identifier()) == language::ClassOf(after.identifier()) &&
         before.name() == after.name();
}

// What entries are known by: the key, and how many of that key come before.
std::vector<std::string> NamesOf(const std::vector<PlacedEntry>& entries) {
  std::unordered_map<std::string, std::size_t> counts;
  std::vector<std::string> names;
  names.reserve(entries.size());
  for (const auto& [section, entry] : entries) {
    const bool has_name = entry.has_name();
    std::string name =
        has_name ? fmt::format("{:x} {}", language::ClassOf(entry.identifier()), entry.name())
                 : fmt::format("{:x}", entry.identifier());
    const std::size_t before = counts[name]++;
    names.push_back(before == 0 ? std::move(name) : fmt::format("{}\n{}", name, before));
  }
  return names;
}

// The fields of the parts of a value, by the names of the parts.
ClassId ClassOfPart(const machine::EntryValue& value, const std::string& part) {
  const language::ValueType& type =
      value.type ? language::FindValueType(*value.type) : language::kRepeaterRecord;
  for (std::size_t i = 0; i < type.fields.size(); ++i) {
    if (type.fields[i].part == part) return ClassOf(type.fields[i], type.roles[i]);
  }
  return ClassId::kEntryChanged;
}

}  // namespace

Change& SectionComparer::Add(ClassId id, const PlacedEntry& before, const PlacedEntry& after) {
  changes_.push_back(
      {&RowOf(id), before.section.kind, before.Key(), {}, before.SideOf(), after.SideOf()});
  return changes_.back();
}

void SectionComparer::AddOne(const PlacedEntry& entry, bool is_new) {
  const EntryClasses classes = ClassesOf(*entry.section.kind, entry.entry.identifier());
  Side side = entry.SideOf();
  side.text = TextOf(entry);
  Side other{side.id, side.name, std::nullopt, std::nullopt};
  Change change{&RowOf(is_new ? classes.added : classes.removed), entry.section.kind, entry.Key()};
  change.before = is_new ? other : side;
  change.after = is_new ? side : other;
  changes_.push_back(std::move(change));
}

bool SectionComparer::AreAlike(const PlacedSection& before, const PlacedSection& after) const {
  const ruxcomp::Entries old_entries = before.section.entries();
  const ruxcomp::Entries new_entries = after.section.entries();
  if (old_entries.size() != new_entries.size()) return false;
  auto other = new_entries.begin();
  for (const ruxcomp::Entry entry : old_entries) {
    const ruxcomp::Entry match = *other;
    ++other;
    if (!AreSameKeys(entry, match)) return false;
    if (machine::IsLabel(entry)) continue;
    const language::SectionKind* kind =
        matching_.has_new_ids() ? KindOfIds({before, entry}) : nullptr;
    if (!matching_.AreSameValues(kind, entry.values(), match.values())) return false;
  }
  return true;
}

void SectionComparer::CompareEntries(const PlacedSection& before, const PlacedSection& after) {
  if (!AreAlike(before, after)) return CompareKeys(EntriesOf(before), EntriesOf(after));
  // A limit may be another one although its number is the same.
  if (!before.rules->has_quantities() && !after.rules->has_quantities()) return;
  auto other = after.section.entries().begin();
  for (const ruxcomp::Entry entry : before.section.entries()) {
    const PlacedEntry limit{before, entry};
    if (LimitOf(limit) != nullptr) CompareLimit(limit, {after, *other});
    ++other;
  }
}

void SectionComparer::CompareKeys(const std::vector<PlacedEntry>& before,
                                  const std::vector<PlacedEntry>& after) {
  const std::vector<std::string> old_names = NamesOf(before);
  const std::vector<std::string> new_names = NamesOf(after);
  std::unordered_map<std::string_view, std::uint32_t> known;
  for (std::size_t i = 0; i < before.size(); ++i)
    known.emplace(old_names[i], static_cast<std::uint32_t>(i));
  std::vector<Pair> pairs;
  std::vector<bool> is_found(before.size());
  std::vector<const PlacedEntry*> added;
  for (std::size_t i = 0; i < after.size(); ++i) {
    const auto found = known.find(new_names[i]);
    if (found == known.end()) {
      added.push_back(&after[i]);
      continue;
    }
    is_found[found->second] = true;
    pairs.push_back({found->second, static_cast<std::uint32_t>(i)});
  }
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (!is_found[i]) AddOne(before[i], false);
  }
  for (const Pair& pair : pairs) CompareEntry(before[pair.before], after[pair.after]);
  for (const PlacedEntry* entry : added) AddOne(*entry, true);
  const OrderChange order = OrderOf(pairs);
  if (order.order != Order::kReordered) return;
  const PlacedEntry& old_one = before[order.before.before];
  const PlacedEntry& new_one = after[order.after.after];
  Change& change = Add(ClassId::kEntriesReordered, old_one, new_one);
  change.entry.clear();
  change.before.text = old_one.Key();
  change.after.text = new_one.Key();
}

void SectionComparer::CompareEntry(const PlacedEntry& before, const PlacedEntry& after) {
  if (LimitOf(before) != nullptr) return CompareLimit(before, after);
  const language::SectionKind* kind = KindOfIds(before);
  const ruxcomp::Values old_values = before.entry.values();
  const ruxcomp::Values new_values = after.entry.values();
  if (matching_.AreSameValues(kind, old_values, new_values)) return;
  const bool has_members = before.entry.identifier() == RUX_ENTRY_SENSORS;
  if (has_members && kind != nullptr) return CompareMembers(before, after);
  const machine::EntryValue value = machine::ValueOf(before.entry);
  const bool has_parts = value.parts.empty() || !value.parts.front().name.empty();
  if (has_parts && value.type == machine::ValueOf(after.entry).type)
    return CompareParts(before, after);
  const EntryClasses classes = ClassesOf(*before.section.kind, before.entry.identifier());
  Change& change = Add(classes.changed, before, after);
  change.before.text = TextOf(before);
  change.after.text = TextOf(after);
}

void SectionComparer::CompareLimit(const PlacedEntry& before, const PlacedEntry& after) {
  const auto amount = [](const PlacedEntry& entry) {
    return Amount{NumberOf(entry.entry.value()), entry.section.Quantity()};
  };
  const std::optional<ClassId> id =
      ClassOfLimit(LimitOf(before)->side, amount(before), amount(after));
  if (!id) return;
  Change& change = Add(*id, before, after);
  change.before.text = TextOf(before);
  change.after.text = TextOf(after);
}

void SectionComparer::CompareParts(const PlacedEntry& before, const PlacedEntry& after) {
  const machine::EntryValue old_value = machine::ValueOf(before.entry);
  const machine::EntryValue new_value = machine::ValueOf(after.entry);
  const auto find = [](const machine::EntryValue& value, const std::string& name) {
    return std::find_if(value.parts.begin(), value.parts.end(),
                        [&](const machine::EntryPart& part) { return part.name == name; });
  };
  const auto add = [&](const std::string& name, const machine::EntryPart* old_part,
                       const machine::EntryPart* new_part) {
    Change& change = Add(ClassOfPart(old_value, name), before, after);
    change.part = name;
    if (old_part != nullptr) change.before.text = inspect::PartText(*old_part);
    if (new_part != nullptr) change.after.text = inspect::PartText(*new_part);
  };
  for (const machine::EntryPart& part : old_value.parts) {
    const auto other = find(new_value, part.name);
    if (other == new_value.parts.end()) {
      add(part.name, &part, nullptr);
    } else if (!matching_.AreSameParts(part, *other)) {
      add(part.name, &part, &*other);
    }
  }
  for (const machine::EntryPart& part : new_value.parts) {
    if (find(old_value, part.name) == old_value.parts.end()) add(part.name, nullptr, &part);
  }
}

// As sets; what is new or gone in the machine is not reported again.
void SectionComparer::CompareMembers(const PlacedEntry& before, const PlacedEntry& after) {
  const language::SectionKind& kind = *KindOfIds(before);
  const auto ids_of = [](const PlacedEntry& entry) {
    std::vector<std::uint32_t> ids;
    for (const ruxcomp::Value value : entry.entry.values())
      ids.push_back(NumberOf(value).value_or(0));
    return ids;
  };
  const std::vector<std::uint32_t> old_ids = ids_of(before);
  const std::vector<std::uint32_t> new_ids = ids_of(after);
  std::unordered_map<std::uint32_t, std::uint32_t> places;
  for (std::size_t i = 0; i < new_ids.size(); ++i)
    places.emplace(new_ids[i], static_cast<std::uint32_t>(i));
  std::unordered_set<std::uint32_t> kept;
  std::vector<Pair> pairs;
  const auto add = [&](ClassId id, const PlacedEntry& holder, std::uint32_t sensor) {
    Change& change = Add(id, before, after);
    Side& side = id == ClassId::kMemberLeft ? change.before : change.after;
    side.text = IdText(*holder.section.machine, kind, sensor);
  };
  for (std::size_t i = 0; i < old_ids.size(); ++i) {
    const std::uint32_t id = matching_.NewId(kind, old_ids[i]);
    const auto found = places.find(id);
    if (found != places.end()) {
      kept.insert(id);
      pairs.push_back({static_cast<std::uint32_t>(i), found->second});
    } else if (after.section.machine->model().section_with_id(kind.compiled, id)) {
      add(ClassId::kMemberLeft, before, old_ids[i]);
    }
  }
  for (const std::uint32_t id : new_ids) {
    const std::uint32_t old_id = matching_.OldId(kind, id);
    if (kept.count(id) == 0 &&
        before.section.machine->model().section_with_id(kind.compiled, old_id))
      add(ClassId::kMemberAdded, after, id);
  }
  std::sort(pairs.begin(), pairs.end(),
            [](const Pair& a, const Pair& b) { return a.after < b.after; });
  const OrderChange order = OrderOf(pairs);
  if (order.order != Order::kReordered) return;
  Change& change = Add(ClassId::kMembersReordered, before, after);
  change.before.text = IdText(*before.section.machine, kind, old_ids[order.before.before]);
  change.after.text = IdText(*after.section.machine, kind, new_ids[order.after.after]);
}

}  // namespace rux::diff
