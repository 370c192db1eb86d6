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
#include "ruxcomp/model/hash_index.h"
#include "ruxcomp/model/seeded_hash.h"

namespace ruxcomp::core {

using ruxcomp::detail::HashMap;
using ruxcomp::detail::HashSet;

namespace {

// The index of a kind, filled by fill(kind, index) when it is first asked for. It stays where it
// is.
template <class PerKind, class Fill>
auto& Of(PerKind& indices, SectionId kind, Fill fill) {
  const auto [place, isNew] = indices.try_emplace(kind);
  if (isNew) fill(kind, place->second);
  return place->second;
}

template <class Index, class Fill>
Index& Of(std::optional<Index>& index, Fill fill) {
  if (!index) fill(index.emplace());
  return *index;
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

void IndexGlobals(HashSet<std::string_view>& index) {
  for (const CRUXSection* section : SectionsOf(SECTION_GLOBAL)) {
    AddEntryNames(*section, ENTRY_G, index);
  }
}

void IndexGroupLines(HashMap<std::string_view, std::uint32_t>& index) {
  for (const CRUXSection* group : SectionsOf(SECTION_GROUP)) {
    const std::optional<Text> name = FindText(group, ENTRY_NAME);
    if (!name) continue;
    std::uint32_t& smallest = index.try_emplace(*name, group->line).first->second;
    smallest = std::min(smallest, group->line);
  }
}

}  // namespace

void ModelIndex::IndexNames(SectionId kind, ByText& index) {
  index.Reserve(SectionsOf(kind).size());
  ForEachSection(kind, [&](std::size_t ordinal, const CRUXSection* section) {
    const CRUXEntry* entry = FindEntry(section, ENTRY_NAME);
    if (const std::optional<Text> name = TextOf(entry)) {
      index.Add(*name, {ordinal, section, entry});
    } else if (!index.without) {
      index.without = {ordinal, section, nullptr};
    }
  });
}

void ModelIndex::IndexIds(SectionId kind, ByNumber& index) {
  index.Reserve(SectionsOf(kind).size());
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
}

void ModelIndex::IndexEntries(SectionId kind, ByText& index) {
  ForEachSection(kind, [&](std::size_t ordinal, const CRUXSection* section) {
    for (const CRUXEntry* entry : section->entries) {
      if (!IsGiven(entry)) continue;
      index.Add(entry->name, {ordinal, section, entry});
    }
  });
}

const ModelIndex::FirstDefinition* ModelIndex::ByName(SectionId kind, std::string_view name) {
  return Of(names_, kind, IndexNames).Find(name);
}

const ModelIndex::FirstDefinition* ModelIndex::ByNameOrNameless(SectionId kind,
                                                                std::string_view name) {
  const FirstDefinition* named = ByName(kind, name);
  if (!name.empty()) return named;
  const FirstDefinition* nameless = Given(Of(names_, kind, IndexNames).without);
  return named && (!nameless || named->ordinal < nameless->ordinal) ? named : nameless;
}

const ModelIndex::FirstDefinition* ModelIndex::ById(SectionId kind, std::uint32_t number) {
  return Of(ids_, kind, IndexIds).Find(number);
}

const ModelIndex::FirstDefinition* ModelIndex::ByEntry(SectionId kind, std::string_view name) {
  return Of(entries_, kind, IndexEntries).Find(name);
}

const ModelIndex::FirstDefinition* ModelIndex::FirstWithId(SectionId kind) {
  return Given(Of(ids_, kind, IndexIds).with);
}

const ModelIndex::FirstDefinition* ModelIndex::FirstRaisingId(SectionId kind) {
  return Given(Of(ids_, kind, IndexIds).raising);
}

bool ModelIndex::HasRepeatedName(SectionId kind) { return Of(names_, kind, IndexNames).has_repeat; }

bool ModelIndex::HasRepeatedOrRaisingId(SectionId kind) {
  const ByNumber& ids = Of(ids_, kind, IndexIds);
  return ids.has_repeat || ids.raising;
}

bool ModelIndex::Numbers::Add(std::string_view text, const findings::Origin& origin) {
  std::uint32_t number = 0;
  try {
    if (NumberOrWord(text, number)) numbers_.Add(0, number, 0);
    return true;
  } catch (const std::out_of_range&) {
    raising_ = text;
    at_ = origin;
    return false;
  }
}

bool ModelIndex::Numbers::Has(std::uint32_t number) const {
  if (numbers_.Find(0, number) != ruxcomp::detail::kNoItem) return true;
  // Raised again for each number that the walk does not find before this text.
  if (raising_) {
    findings::Examine(at_);
    NumberOrWord(*raising_, number);
  }
  return false;
}

void ModelIndex::IndexIdsAndWords(SectionId kind, Numbers& index) {
  index.Reserve(SectionsOf(kind).size());
  for (const CRUXSection* section : SectionsOf(kind)) {
    const CRUXEntry* entry = FindEntry(section, ENTRY_ID);
    const std::optional<Text> id = TextOf(entry);
    if (id && !index.Add(*id, section->OriginOf(*entry, 0))) return;
  }
}

void ModelIndex::IndexLists(SectionId kind, Numbers& index) {
  for (const CRUXSection* group : SectionsOf(kind)) {
    const CRUXEntry* sensors = FindEntry(group, ENTRY_SENSORS);
    const std::optional<TextList> list = sensors ? sensors->m_RuxEntryData.list() : std::nullopt;
    if (!list) continue;
    std::uint32_t part = 0;
    for (const std::string_view element : *list) {
      if (!index.Add(element, group->OriginOf(*sensors, part++))) return;
    }
  }
}

bool ModelIndex::HasId(SectionId kind, std::uint32_t number) {
  return Of(ids_and_words_, kind, IndexIdsAndWords).Has(number);
}

bool ModelIndex::IsListed(std::uint32_t number) {
  return Of(listed_, SECTION_PELMGROUP, IndexLists).Has(number);
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
  const auto& lines = Of(group_lines_, IndexGroupLines);
  const auto smallest = lines.find(name);
  return smallest != lines.end() && smallest->second < line;
}

}  // namespace ruxcomp::core
