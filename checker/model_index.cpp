#include "checker/model_index.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "checker/number.h"
#include "findings/origin.h"
#include "frontend/entry.h"
#include "frontend/lookup.h"
#include "frontend/section.h"
#include "frontend/value_records.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"

namespace {

// The index of a kind, made by build(kind) when it is first asked for.
template <class PerKind, class Build>
auto& Of(PerKind& indices, SectionId kind, Build build) {
  const auto [place, isNew] = indices.try_emplace(kind);
  if (isNew) place->second = build(kind);
  return place->second;
}

template <class Index, class Build>
Index& Of(std::optional<Index>& index, Build build) {
  if (!index) index = build();
  return *index;
}

template <class Index, class Key>
const typename Index::mapped_type* Find(const Index& index, const Key& key) {
  const auto found = index.find(key);
  return found == index.end() ? nullptr : &found->second;
}

// Calls use(ordinal, section) for the sections of a kind in order of definition.
template <class Use>
void ForEachSection(SectionId kind, Use use) {
  std::size_t ordinal = 0;
  for (const CRUXSection* section : SectionsOf(kind)) use(ordinal++, section);
}

const std::string* TextOf(const CRUXEntry* entry) {
  return entry ? entry->m_RuxEntryData.Get<std::string>() : nullptr;
}

auto IndexIdsAndWords(SectionId kind) {
  std::unordered_set<std::uint32_t> index;
  index.reserve(SectionsOf(kind).size());
  for (const CRUXSection* section : SectionsOf(kind)) {
    const std::string* id = FindText(section, ENTRY_ID);
    std::uint32_t number = 0;
    if (id && NumberOrWord(*id, number)) index.insert(number);
  }
  return index;
}

void AddEntryNames(const CRUXSection& section, EntryId id,
                   std::unordered_set<std::string_view>& index) {
  for (const auto& entry : section.entries) {
    if (entry && entry->identifier == id) index.insert(entry->name.text());
  }
}

auto IndexGlobals() {
  std::unordered_set<std::string_view> index;
  for (const CRUXSection* section : SectionsOf(SECTION_GLOBAL)) {
    AddEntryNames(*section, ENTRY_G, index);
  }
  return index;
}

auto IndexGroupLines() {
  std::unordered_map<std::string_view, std::uint32_t> index;
  for (const CRUXSection* group : SectionsOf(SECTION_GROUP)) {
    const std::string* name = FindText(group, ENTRY_NAME);
    if (!name) continue;
    std::uint32_t& smallest = index.try_emplace(*name, group->line).first->second;
    smallest = std::min(smallest, group->line);
  }
  return index;
}

}  // namespace

auto ModelIndex::IndexNames(SectionId kind) -> FirstDefinitions<std::string_view> {
  FirstDefinitions<std::string_view> index;
  index.by_key.reserve(SectionsOf(kind).size());
  ForEachSection(kind, [&](std::size_t ordinal, const CRUXSection* section) {
    const CRUXEntry* entry = FindEntry(section, ENTRY_NAME);
    if (const std::string* name = TextOf(entry)) {
      index.Add(*name, {ordinal, section, entry});
    } else {
      index.Add("", {ordinal, section, nullptr});
    }
  });
  return index;
}

auto ModelIndex::IndexIds(SectionId kind) -> FirstDefinitions<std::uint32_t> {
  FirstDefinitions<std::uint32_t> index;
  index.by_key.reserve(SectionsOf(kind).size());
  ForEachSection(kind, [&](std::size_t ordinal, const CRUXSection* section) {
    const CRUXEntry* entry = FindEntry(section, ENTRY_ID);
    const std::string* id = TextOf(entry);
    std::uint32_t number = 0;
    if (id && StringToLong(*id, number)) index.Add(number, {ordinal, section, entry});
  });
  return index;
}

auto ModelIndex::IndexEntries(SectionId kind) -> FirstDefinitions<std::string_view> {
  FirstDefinitions<std::string_view> index;
  ForEachSection(kind, [&](std::size_t ordinal, const CRUXSection* section) {
    for (const auto& entry : section->entries) {
      if (!IsGiven(entry)) continue;
      index.Add(entry->name.text(), {ordinal, section, entry.get()});
    }
  });
  return index;
}

const ModelIndex::FirstDefinition* ModelIndex::ByName(SectionId kind, std::string_view name) {
  return Find(Of(names_, kind, IndexNames).by_key, name);
}

const ModelIndex::FirstDefinition* ModelIndex::ById(SectionId kind, std::uint32_t number) {
  return Find(Of(ids_, kind, IndexIds).by_key, number);
}

const ModelIndex::FirstDefinition* ModelIndex::ByEntry(SectionId kind, std::string_view name) {
  return Find(Of(entries_, kind, IndexEntries).by_key, name);
}

bool ModelIndex::HasRepeatedName(SectionId kind) { return Of(names_, kind, IndexNames).has_repeat; }

bool ModelIndex::HasRepeatedId(SectionId kind) { return Of(ids_, kind, IndexIds).has_repeat; }

bool ModelIndex::HasId(SectionId kind, std::uint32_t number) {
  return Of(ids_and_words_, kind, IndexIdsAndWords).count(number) > 0;
}

ModelIndex::Listed ModelIndex::IndexLists() {
  Listed index;
  for (const CRUXSection* group : SectionsOf(SECTION_PELMGROUP)) {
    const CRUXEntry* sensors = FindEntry(group, ENTRY_SENSORS);
    const TextList* list = sensors ? sensors->m_RuxEntryData.Get<TextList>() : nullptr;
    if (!list) continue;
    std::uint32_t part = 0;
    for (const std::string& element : *list) try {
        std::uint32_t number = 0;
        if (NumberOrWord(element, number)) index.numbers.insert(number);
        ++part;
      } catch (const std::out_of_range&) {
        index.raising = &element;
        index.at = group->OriginOf(*sensors, part);
        return index;
      }
  }
  return index;
}

bool ModelIndex::IsListed(std::uint32_t number) {
  const Listed& listed = Of(listed_, IndexLists);
  if (listed.numbers.count(number) > 0) return true;
  // Raised anew: the walk has come this far for every number that does not stand before.
  if (listed.raising) {
    findings::Examine(listed.at);
    NumberOrWord(*listed.raising, number);
  }
  return false;
}

bool ModelIndex::HasGlobal(std::string_view name) {
  return Of(globals_, IndexGlobals).count(name) > 0;
}

bool ModelIndex::HasValue(const CRUXSection& section, std::string_view name) {
  if (values_of_ != &section) {
    values_of_ = &section;
    values_.clear();
    AddEntryNames(section, ENTRY_VALUE_OF_ACTION, values_);
  }
  return values_.count(name) > 0;
}

bool ModelIndex::HasGroupAbove(std::string_view name, std::uint32_t line) {
  const std::uint32_t* smallest = Find(Of(group_lines_, IndexGroupLines), name);
  return smallest && *smallest < line;
}
