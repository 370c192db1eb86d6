#include "checker/model_index.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "findings/origin.h"
#include "frontend/defined_words.h"
#include "frontend/entry.h"
#include "frontend/section.h"
#include "frontend/text.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/seeded_hash.h"

namespace ruxcomp::core {

using ruxcomp::detail::HashMap;
using ruxcomp::detail::HashSet;

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

template <class Definition>
const Definition* Given(const std::optional<Definition>& definition) {
  return definition ? &*definition : nullptr;
}

// Calls use(ordinal, section) for the sections of a kind in order of definition.
template <class Use>
void ForEachSection(SectionId kind, Use use) {
  std::size_t ordinal = 0;
  for (const CRUXSection* section : SectionsOf(kind)) use(ordinal++, section);
}

std::optional<Text> TextOf(const CRUXEntry* entry) {
  return entry ? entry->m_RuxEntryData.text() : std::nullopt;
}

void AddEntryNames(const CRUXSection& section, EntryId id, HashSet<std::string_view>& index) {
  for (const CRUXEntry* entry : section.entries) {
    if (entry && entry->identifier == id) index.insert(entry->name);
  }
}

auto IndexGlobals() {
  HashSet<std::string_view> index;
  for (const CRUXSection* section : SectionsOf(SECTION_GLOBAL)) {
    AddEntryNames(*section, ENTRY_G, index);
  }
  return index;
}

auto IndexGroupLines() {
  HashMap<std::string_view, std::uint32_t> index;
  for (const CRUXSection* group : SectionsOf(SECTION_GROUP)) {
    const std::optional<Text> name = FindText(group, ENTRY_NAME);
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
    if (const std::optional<Text> name = TextOf(entry)) {
      index.Add(*name, {ordinal, section, entry});
    } else if (!index.without) {
      index.without = {ordinal, section, nullptr};
    }
  });
  return index;
}

auto ModelIndex::IndexIds(SectionId kind) -> FirstDefinitions<std::uint32_t> {
  FirstDefinitions<std::uint32_t> index;
  index.by_key.reserve(SectionsOf(kind).size());
  ForEachSection(kind, [&](std::size_t ordinal, const CRUXSection* section) {
    const CRUXEntry* entry = FindEntry(section, ENTRY_ID);
    const std::optional<Text> id = TextOf(entry);
    if (!id) return;
    const FirstDefinition definition = {ordinal, section, entry};
    if (!index.with) index.with = definition;
    const ruxcomp::language::Number read = ruxcomp::language::ReadNumber(*id);
    if (read.raises && !index.raising) index.raising = definition;
    if (read.is_number) index.Add(read.value, definition);
  });
  return index;
}

auto ModelIndex::IndexEntries(SectionId kind) -> FirstDefinitions<std::string_view> {
  FirstDefinitions<std::string_view> index;
  ForEachSection(kind, [&](std::size_t ordinal, const CRUXSection* section) {
    for (const CRUXEntry* entry : section->entries) {
      if (!IsGiven(entry)) continue;
      index.Add(entry->name, {ordinal, section, entry});
    }
  });
  return index;
}

const ModelIndex::FirstDefinition* ModelIndex::ByName(SectionId kind, std::string_view name) {
  return Find(Of(names_, kind, IndexNames).by_key, name);
}

const ModelIndex::FirstDefinition* ModelIndex::ByNameOrNameless(SectionId kind,
                                                                std::string_view name) {
  const FirstDefinition* named = ByName(kind, name);
  if (!name.empty()) return named;
  const FirstDefinition* nameless = Given(Of(names_, kind, IndexNames).without);
  return named && (!nameless || named->ordinal < nameless->ordinal) ? named : nameless;
}

const ModelIndex::FirstDefinition* ModelIndex::ById(SectionId kind, std::uint32_t number) {
  return Find(Of(ids_, kind, IndexIds).by_key, number);
}

const ModelIndex::FirstDefinition* ModelIndex::ByEntry(SectionId kind, std::string_view name) {
  return Find(Of(entries_, kind, IndexEntries).by_key, name);
}

const ModelIndex::FirstDefinition* ModelIndex::FirstWithId(SectionId kind) {
  return Given(Of(ids_, kind, IndexIds).with);
}

const ModelIndex::FirstDefinition* ModelIndex::FirstRaisingId(SectionId kind) {
  return Given(Of(ids_, kind, IndexIds).raising);
}

bool ModelIndex::HasRepeatedName(SectionId kind) { return Of(names_, kind, IndexNames).has_repeat; }

bool ModelIndex::HasRepeatedOrRaisingId(SectionId kind) {
  const FirstDefinitions<std::uint32_t>& ids = Of(ids_, kind, IndexIds);
  return ids.has_repeat || ids.raising;
}

bool ModelIndex::Numbers::Add(std::string_view text, const findings::Origin& origin) {
  std::uint32_t number = 0;
  try {
    if (NumberOrWord(text, number)) numbers_.insert(number);
    return true;
  } catch (const std::out_of_range&) {
    raising_ = text;
    at_ = origin;
    return false;
  }
}

bool ModelIndex::Numbers::Has(std::uint32_t number) const {
  if (numbers_.count(number) > 0) return true;
  // Raised again for each number that the walk does not find before this text.
  if (raising_) {
    findings::Examine(at_);
    NumberOrWord(*raising_, number);
  }
  return false;
}

ModelIndex::Numbers ModelIndex::IndexIdsAndWords(SectionId kind) {
  Numbers index;
  index.Reserve(SectionsOf(kind).size());
  for (const CRUXSection* section : SectionsOf(kind)) {
    const CRUXEntry* entry = FindEntry(section, ENTRY_ID);
    const std::optional<Text> id = TextOf(entry);
    if (id && !index.Add(*id, section->OriginOf(*entry, 0))) break;
  }
  return index;
}

ModelIndex::Numbers ModelIndex::IndexLists() {
  Numbers index;
  for (const CRUXSection* group : SectionsOf(SECTION_PELMGROUP)) {
    const CRUXEntry* sensors = FindEntry(group, ENTRY_SENSORS);
    const std::optional<TextList> list = sensors ? sensors->m_RuxEntryData.list() : std::nullopt;
    if (!list) continue;
    std::uint32_t part = 0;
    for (const std::string_view element : *list) {
      if (!index.Add(element, group->OriginOf(*sensors, part++))) return index;
    }
  }
  return index;
}

bool ModelIndex::HasId(SectionId kind, std::uint32_t number) {
  return Of(ids_and_words_, kind, IndexIdsAndWords).Has(number);
}

bool ModelIndex::IsListed(std::uint32_t number) { return Of(listed_, IndexLists).Has(number); }

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

}  // namespace ruxcomp::core
