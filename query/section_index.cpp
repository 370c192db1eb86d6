#include "query/section_index.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "backend/compile_pass.h"
#include "backend/symbol_tables.h"
#include "query/names.h"
#include "ruxcomp/records.h"

// Calls use(place) for every entry that offers an index, in order.
template <class Offered, class Use>
void SectionIndex::ForEachOffer(const std::vector<tagGCSECT*>& sections, Offered offered, Use use) {
  for (tagGCSECT* section : sections) {
    for (std::size_t i = 0; i < section->entries.size(); ++i) {
      if (const std::uint32_t* index = offered(section->entries[i])) use(Place{section, i, *index});
    }
  }
}

bool SectionIndex::IsOf(const std::vector<tagGCSECT*>& sections) const {
  return generation_ == RecordsGeneration() && first_ == sections.data() &&
         count_ == sections.size();
}

SectionIndex& SectionIndex::Current() {
  static SectionIndex current;
  if (current.IsOf(g_GCHead)) return current;
  SectionIndex fresh;
  for (tagGCSECT* section : g_GCHead) fresh.kinds_[section->identifier].sections.push_back(section);
  fresh.first_ = g_GCHead.data();
  fresh.count_ = g_GCHead.size();
  fresh.generation_ = RecordsGeneration();
  return current = std::move(fresh);
}

SectionIndex::Kind* SectionIndex::Find(std::uint32_t kind) {
  const auto found = kinds_.find(kind);
  return found == kinds_.end() ? nullptr : &found->second;
}

const std::vector<tagGCSECT*>& SectionIndex::OfKind(std::uint32_t kind) const {
  static const std::vector<tagGCSECT*> none;
  const auto found = kinds_.find(kind);
  return found == kinds_.end() ? none : found->second.sections;
}

tagTBLDATA SectionIndex::Look(std::uint32_t index) {
  if (!tables_) tables_.emplace();
  return tables_->Get(index);
}

// Of places with one ID, and of those with one name, the first counts.

auto SectionIndex::IndexIds(const Kind& kind) -> Places<std::uint32_t> {
  Places<std::uint32_t> ids;
  ids.reserve(kind.sections.size());
  ForEachOffer(kind.sections, OfferedId, [&](const Place& place) {
    const tagTBLDATA data = Look(place.index);
    if (data.kind == RUX_DATA_NUMBER) ids.try_emplace(data.data.number, place);
  });
  return ids;
}

auto SectionIndex::IndexNames(const Kind& kind) -> Places<std::string> {
  Places<std::string> names;
  names.reserve(kind.sections.size());
  const std::uint32_t identifier = kind.sections.front()->identifier;
  const auto offered = [&](const tagGCENTRY& entry) { return OfferedName(identifier, entry); };
  ForEachOffer(kind.sections, offered, [&](const Place& place) {
    const tagTBLDATA data = Look(place.index);
    if (data.kind == RUX_DATA_STRING) names.try_emplace(data.data.string, place);
  });
  return names;
}

template <class Known, class Key, class Offered>
tagGCSECT* SectionIndex::Cached(const Known& places, const Key& key, Offered offered) {
  const auto found = places.find(key);
  if (found == places.end()) return nullptr;
  const Place& place = found->second;
  if (place.entry >= place.section->entries.size()) return nullptr;
  const std::uint32_t* index = offered(place.section->entries[place.entry]);
  return index && *index == place.index ? place.section : nullptr;
}

tagGCSECT* SectionIndex::WithId(std::uint32_t kind, std::uint32_t id) {
  Kind* sections = Find(kind);
  if (!sections) return nullptr;
  if (!sections->ids) sections->ids = IndexIds(*sections);
  return Cached(*sections->ids, id, OfferedId);
}

tagGCSECT* SectionIndex::WithName(std::uint32_t kind, const std::string& name) {
  Kind* sections = Find(kind);
  if (!sections) return nullptr;
  if (!sections->names) sections->names = IndexNames(*sections);
  return Cached(*sections->names, name,
                [&](const tagGCENTRY& entry) { return OfferedName(kind, entry); });
}
