#include "frontend/section.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "frontend/defined_words.h"
#include "frontend/entry.h"
#include "frontend/entry_data.h"
#include "frontend/identifiers.h"
#include "frontend/section_kinds.h"
#include "frontend/text.h"
#include "ruxcomp/data.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/keys.h"
#include "ruxcomp/language/rows.h"

namespace ruxcomp::core {

CRUXSection* CRUXSection::Create(std::string_view file, std::string_view section_name,
                                 std::uint32_t header_line) {
  for (std::uint32_t row = 0; row < g_dwNTMSect; ++row) {
    if (section_name != g_NTMapSect[row].keyword) continue;
    CRUXSection* section = kSectionMakers[row].make();
    section->SetFile(file);
    section->name = section_name;
    section->line = header_line;
    return section;
  }
  return nullptr;
}

void CRUXSection::Destory() {
  for (std::vector<CRUXSection*>* head : m_svpHSection) {
    for (CRUXSection* section : *head) delete section;
    head->clear();
  }
  InternedString::DropTexts();
  m_arena.Clear();
  g_tblPreDefine.clear();
}

void CRUXSection::Init0(std::vector<CRUXSection*>& header) {
  entries.reserve(kind_.templates.size() + kFreeEntries);
  entries.resize(kind_.templates.size());
  const auto end = m_svpHSection.end();
  if (std::find(m_svpHSection.begin(), end, &header) == end) m_svpHSection.push_back(&header);
  header.push_back(this);
}

bool CRUXSection::HasEmptySlot(std::uint32_t entry_id) const {
  for (std::size_t slot = 0; slot < kind_.templates.size(); ++slot) {
    if (!entries[slot] && TemplateOf(slot).identifier == entry_id) return true;
  }
  return false;
}

void CRUXSection::FillSlots() {
  for (std::size_t slot = 0; slot < kind_.templates.size(); ++slot) {
    const EntryTemplate& row = TemplateOf(slot);
    if (!entries[slot]) entries[slot] = MakeEntry(row.identifier, row.notation);
  }
}

void CRUXSection::ReleaseRoom() {
  if (entries.capacity() > entries.size() + kFreeEntries) entries.shrink_to_fit();
}

CRUXEntry& CRUXSection::AddEntry(std::uint32_t entry_id, tagNOTATION flags, std::string_view file,
                                 InternedString key, std::string_view value,
                                 std::uint32_t item_line) {
  CRUXEntry& entry = *entries.emplace_back(MakeEntry(entry_id, flags));
  entry.Init(file, key, value, item_line, {script, ordinal, item});
  return entry;
}

std::uint32_t CRUXSection::SetEntry(std::string_view file, std::string_view key,
                                    std::string_view value, std::uint32_t item_line) {
  const std::size_t slot = FindTemplateRow(kind_, key);
  if (slot >= kind_.templates.size()) return 0;
  const EntryTemplate& row = TemplateOf(slot);
  const InternedString keyword = InternedString::OfKeyword(*FindEntryRow(row.identifier));
  CRUXEntry*& entry = entries[slot];
  if (!entry) entry = MakeEntry(row.identifier, row.notation);
  if (entry->name.empty()) {
    entry->Init(file, keyword, value, item_line, {script, ordinal, item});
  } else {
    AddEntry(row.identifier, kOptional, file, keyword, value, item_line);
  }
  return 1;
}

namespace {

template <class Section, std::uint32_t Id, tagNOTATION Notation>
CRUXSection* Make() {
  return new Section(Id, Notation);
}

template <class Section>
CRUXSection* MakeEmpty() {
  return new Section();
}

}  // namespace

const SectionMaker kSectionMakers[] = {
#define SECTION(keyword, number, notation, form, naming, uniqueness) \
  {SECTION_##keyword, Make<CGS##keyword, SECTION_##keyword, notation>, MakeEmpty<CGS##keyword>},
#include "ruxcomp/language/sections.def"
};

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
    CRUXEntry* entry = section->entries[place];
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

std::optional<Text> FindText(const CRUXSection* section, std::uint32_t id) {
  const CRUXEntry* entry = FindEntry(section, id);
  return entry ? entry->m_RuxEntryData.text() : std::nullopt;
}

}  // namespace ruxcomp::core
