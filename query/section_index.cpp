#include "query/section_index.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "backend/compile_pass.h"
#include "backend/symbol_tables.h"
#include "frontend/lifetime.h"
#include "query/name_matcher.h"
#include "ruxcomp/records.h"

namespace ruxcomp::core {

namespace {

// What remember() answers; nothing when it runs out of memory.
template <class Remember>
auto InMemory(Remember remember) noexcept -> decltype(remember()) {
  try {
    return remember();
  } catch (const std::bad_alloc&) {
    return {};
  }
}

// Calls use(section, i, index) for every entry i that offers an index, in order.
template <class Offered, class Use>
void ForEachOffer(const std::vector<tagGCSECT*>& sections, Offered offered, Use use) {
  for (tagGCSECT* section : sections) {
    for (std::size_t i = 0; i < section->entries.size(); ++i) {
      if (const std::uint32_t* index = offered(section->entries[i])) use(section, i, *index);
    }
  }
}

// The answer for the section of the place with that key; none when the place no longer offers the
// same, so that the caller has to walk.
template <class Places, class Key, class Offered>
std::optional<SectionIndex::Answer> Cached(const Places& places, const Key& key, bool has_others,
                                           Offered offered) {
  const auto found = places.find(key);
  if (found == places.end()) return SectionIndex::Answer{nullptr, true, has_others};
  const auto& place = found->second;
  if (place.entry >= place.section->entries.size()) return std::nullopt;
  const std::uint32_t* index = offered(place.section->entries[place.entry]);
  if (!index || *index != place.index) return std::nullopt;
  return SectionIndex::Answer{place.section, true, true};
}

}  // namespace

RUX_FROM_LOAD_TO_UNLOAD SectionIndex SectionIndex::m_current;

bool SectionIndex::IsUpToDate() const {
  return generation_ == RecordsGeneration() && first_ == g_GCHead.data() &&
         count_ == g_GCHead.size() && table_sizes_ == SizesOfTables();
}

SectionIndex::Kind* SectionIndex::Find(std::uint32_t kind) {
  if (!m_current.IsUpToDate()) {
    SectionIndex fresh;
    for (tagGCSECT* section : g_GCHead) {
      fresh.kinds_[section->identifier].sections.push_back(section);
    }
    fresh.first_ = g_GCHead.data();
    fresh.count_ = g_GCHead.size();
    fresh.generation_ = RecordsGeneration();
    fresh.table_sizes_ = SizesOfTables();
    m_current = std::move(fresh);
  }
  const auto found = m_current.kinds_.find(kind);
  return found == m_current.kinds_.end() ? nullptr : &found->second;
}

// Of places with the same ID or the same name, the first counts.

auto SectionIndex::IndexIds(const Kind& kind) -> Ids {
  Ids ids;
  ids.places.reserve(kind.sections.size());
  TableSnapshot tables;
  ForEachOffer(kind.sections, OfferedId, [&](tagGCSECT* section, std::size_t i, std::uint32_t at) {
    ids.has_any = true;
    const tagTBLDATA data = tables.Get(at);
    if (data.kind == RUX_DATA_NUMBER) {
      ids.places.try_emplace(data.data.number, Place{section, i, at});
    }
  });
  return ids;
}

auto SectionIndex::IndexNames(const Kind& kind) -> Names {
  Names names;
  names.places.reserve(kind.sections.size());
  TableSnapshot tables;
  const std::uint32_t identifier = kind.sections.front()->identifier;
  const auto offered = [&](const tagGCENTRY& entry) { return OfferedName(identifier, entry); };
  ForEachOffer(kind.sections, offered, [&](tagGCSECT* section, std::size_t i, std::uint32_t at) {
    const tagTBLDATA data = tables.Get(at);
    if (data.kind != RUX_DATA_STRING) return;
    const std::string_view name = data.data.string;
    if (names.places.count(name) != 0) return;
    names.places.emplace(names.texts.Add(name), Place{section, i, at});
  });
  return names;
}

std::optional<SectionIndex::Sections> SectionIndex::OfKind(std::uint32_t kind) noexcept {
  return InMemory([kind]() -> std::optional<Sections> {
    const Kind* found = Find(kind);
    return found ? Sections(found->sections.data(), found->sections.size()) : Sections();
  });
}

std::optional<SectionIndex::Answer> SectionIndex::WithId(std::uint32_t kind,
                                                         std::uint32_t id) noexcept {
  return InMemory([=]() -> std::optional<Answer> {
    Kind* sections = Find(kind);
    if (!sections) return Answer();
    if (!sections->ids) sections->ids = IndexIds(*sections);
    return Cached(sections->ids->places, id, sections->ids->has_any, OfferedId);
  });
}

std::optional<SectionIndex::Answer> SectionIndex::WithName(std::uint32_t kind,
                                                           std::string_view name) noexcept {
  return InMemory([=]() -> std::optional<Answer> {
    Kind* sections = Find(kind);
    if (!sections) return Answer();
    if (!sections->names) sections->names = IndexNames(*sections);
    const auto& places = sections->names->places;
    return Cached(places, name, !places.empty(),
                  [kind](const tagGCENTRY& entry) { return OfferedName(kind, entry); });
  });
}

}  // namespace ruxcomp::core
