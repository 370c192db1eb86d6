#include "frontend/section.h"

#include <algorithm>

#include "frontend/payload_types.h"
#include "frontend/predefine.h"
#include "frontend/section_kinds.h"
#include "ruxcomp/data.h"

CRUXSection* CRUXSection::Create(const std::string& file, const std::string& sectionName,
                                 std::uint32_t headerLine) {
  for (std::uint32_t row = 0; row < g_dwNTMSect; ++row) {
    if (sectionName != g_NTMapSect[row].keyword) continue;
    CRUXSection* section = kSectionMakers[row].make();
    section->SetFile(file);
    section->name = sectionName;
    section->line = headerLine;
    return section;
  }
  return nullptr;
}

void CRUXSection::Destory() {
  for (std::vector<CRUXSection*>* head : m_svpHSection) {
    for (CRUXSection* section : *head) delete section;
    head->clear();
  }
  g_tblPreDefine.clear();
}

void CRUXSection::Init0(const SectionSchema& schema, std::vector<CRUXSection*>& header) {
  entries.reserve(schema.templates.size());
  for (const EntryTemplate& row : schema.templates) {
    entries.push_back(MakeEntry(row.identifier, row.notation));
  }
  const auto end = m_svpHSection.end();
  if (std::find(m_svpHSection.begin(), end, &header) == end) m_svpHSection.push_back(&header);
  header.push_back(this);
}

CRUXEntry& CRUXSection::AddEntry(std::uint32_t entryId, tagNOTATION flags, const std::string& file,
                                 const std::string& key, const std::string& value,
                                 std::uint32_t itemLine) {
  CRUXEntry& entry = *entries.emplace_back(MakeEntry(entryId, flags));
  entry.Init(file, key, value, itemLine);
  return entry;
}

CRUXEntry* CRUXSection::FindTemplate(std::uint32_t entryId) const {
  const auto found = std::find_if(entries.begin(), entries.end(), [&](const auto& entry) {
    return entry->identifier == entryId && !(entry->notation & kFreeName);
  });
  return found == entries.end() ? nullptr : found->get();
}

std::uint32_t CRUXSection::SetEntry(const std::string& file, const std::string& key,
                                    const std::string& value, std::uint32_t itemLine) {
  for (std::uint32_t row = 0; row < g_dwNTMEntry; ++row) {
    const char* keyword = g_NTMapEntry[row].keyword;
    if (key[0] != keyword[0] || key != keyword) continue;
    CRUXEntry* entry = FindTemplate(g_NTMapEntry[row].identifier);
    if (!entry) continue;
    if (entry->name.empty()) {
      entry->Init(file, key, value, itemLine);
    } else {
      AddEntry(entry->identifier, kOptional, file, key, value, itemLine);
    }
    return 1;
  }
  return 0;
}
