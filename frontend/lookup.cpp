#include "frontend/lookup.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "frontend/entry.h"
#include "frontend/section.h"
#include "ruxcomp/language/notation.h"

namespace {
const std::vector<CRUXSection*> kNoSections;
}

const std::vector<CRUXSection*>* FindSectHead(std::uint32_t id) {
  for (const std::vector<CRUXSection*>* head : CRUXSection::m_svpHSection) {
    if (!head->empty() && head->front()->identifier == id) return head;
  }
  return nullptr;
}

const std::vector<CRUXSection*>& SectionsOf(std::uint32_t id) {
  const std::vector<CRUXSection*>* head = FindSectHead(id);
  return head ? *head : kNoSections;
}

CRUXEntry* FindEntry(const CRUXSection* section, std::uint32_t id, std::uint32_t& index) {
  std::uint32_t seen = 0;
  for (std::size_t place = 0; place < section->entries.size(); ++place) {
    CRUXEntry* entry = section->entries[place].get();
    if (!entry) {
      if (section->TemplateOf(place).identifier == id) return nullptr;
      continue;
    }
    if (entry->identifier != id) continue;
    if (!(entry->notation & kFreeName)) return entry;
    if (seen++ == index) return entry;
  }
  if (index == 0xFFFFFFFF) index = seen;
  return nullptr;
}

CRUXEntry* FindEntry(const CRUXSection* section, std::uint32_t id) {
  std::uint32_t first = 0;
  return FindEntry(section, id, first);
}

const std::string* FindText(const CRUXSection* section, std::uint32_t id) {
  const CRUXEntry* entry = FindEntry(section, id);
  return entry ? entry->m_RuxEntryData.Get<std::string>() : nullptr;
}
