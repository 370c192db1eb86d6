// Finding sections and entries in the source model.
#ifndef FRONTEND_LOOKUP_H_
#define FRONTEND_LOOKUP_H_

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "frontend/entry.h"
#include "frontend/section.h"

// All sections of one kind in order of definition; null when there is none.
const std::vector<CRUXSection*>* FindSectHead(std::uint32_t id);

// The same as something to loop over: empty when there is none.
const std::vector<CRUXSection*>& SectionsOf(std::uint32_t id);

// The first entry with that identifier whose name is not free, whatever index says; else the
// index-th one with a free name. Null when its slot is empty, which leaves the index alone, too.
// Null when there is none; then an index of 0xFFFFFFFF is replaced by the number of entries with a
// free name.
CRUXEntry* FindEntry(const CRUXSection* section, std::uint32_t id, std::uint32_t& index);

// The first entry with that identifier; null when there is none, or only an empty slot for it.
CRUXEntry* FindEntry(const CRUXSection* section, std::uint32_t id);

// The text of the first entry with that identifier; null when there is none or it holds no text.
const std::string* FindText(const CRUXSection* section, std::uint32_t id);

// Whether the script gave the entry that is in a place of a section.
inline bool IsGiven(const std::unique_ptr<CRUXEntry>& entry) {
  return entry && entry->m_RuxEntryData.HasData();
}

// Whether the values of the section may name arguments and each other; a restored section is what
// its name says.
inline bool IsAction(const CRUXSection& section) {
  return section.name == KindOf(SECTION_ACTION).keyword;
}

#endif  // FRONTEND_LOOKUP_H_
