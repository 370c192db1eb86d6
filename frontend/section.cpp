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
  Name::DropTexts();
  CRUXEntry::m_itemTexts.Clear();
  g_tblPreDefine.clear();
}

std::vector<EntryPtr> CRUXSection::NewTemplates(const SectionKind& kind) {
  std::vector<EntryPtr> templates;
  templates.reserve(kind.templates.size());
  for (const EntryTemplate& row : kind.templates) {
    templates.push_back(MakeEntry(row.identifier, row.notation));
  }
  return templates;
}

std::vector<EntryPtr> CRUXSection::SharedTemplates(const SectionKind& kind) {
  const auto [shared, isNew] = m_sharedTemplates.try_emplace(&kind);
  if (isNew) {
    for (const EntryTemplate& row : kind.templates) {
      shared->second.push_back(MakeEntry(row.identifier, row.notation));
      shared->second.back()->isShared = true;
    }
  }
  std::vector<EntryPtr> templates;
  templates.reserve(shared->second.size() + kFreeEntries);
  for (const auto& entry : shared->second) templates.emplace_back(entry.get());
  return templates;
}

void CRUXSection::Init0(std::vector<EntryPtr> templates, std::vector<CRUXSection*>& header) {
  entries = std::move(templates);
  const auto end = m_svpHSection.end();
  if (std::find(m_svpHSection.begin(), end, &header) == end) m_svpHSection.push_back(&header);
  header.push_back(this);
}

void CRUXSection::ReleaseRoom() {
  if (entries.capacity() > entries.size() + kFreeEntries) entries.shrink_to_fit();
}

CRUXEntry& CRUXSection::AddEntry(std::uint32_t entryId, tagNOTATION flags, const std::string& file,
                                 const std::string& key, const std::string& value,
                                 std::uint32_t itemLine) {
  CRUXEntry& entry = *entries.emplace_back(MakeEntry(entryId, flags));
  entry.Init(file, key, value, itemLine);
  return entry;
}

EntryPtr* CRUXSection::FindTemplate(std::uint32_t entryId) {
  const auto found = std::find_if(entries.begin(), entries.end(), [&](const auto& entry) {
    return entry->identifier == entryId && !(entry->notation & kFreeName);
  });
  return found == entries.end() ? nullptr : &*found;
}

std::uint32_t CRUXSection::SetEntry(const std::string& file, const std::string& key,
                                    const std::string& value, std::uint32_t itemLine) {
  for (std::uint32_t row = 0; row < g_dwNTMEntry; ++row) {
    const char* keyword = g_NTMapEntry[row].keyword;
    if (key[0] != keyword[0] || key != keyword) continue;
    EntryPtr* entry = FindTemplate(g_NTMapEntry[row].identifier);
    if (!entry) continue;
    if ((*entry)->name.empty()) {
      if ((*entry)->isShared) *entry = MakeEntry((*entry)->identifier, (*entry)->notation);
      (*entry)->Init(file, key, value, itemLine);
    } else {
      AddEntry((*entry)->identifier, kOptional, file, key, value, itemLine);
    }
    return 1;
  }
  return 0;
}
