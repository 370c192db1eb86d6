#include "backend/compile_pass.h"

#include <algorithm>
#include <memory>

#include "backend/lookups.h"
#include "backend/meta_file.h"
#include "backend/symbol_tables.h"
#include "checker/number.h"
#include "frontend/identifiers.h"
#include "frontend/lookup.h"
#include "ruxcomp/compile.h"

std::vector<tagGCSECT*> g_GCHead;

namespace {

std::uint32_t CompileSection(const CRUXSection& section) {
  std::unique_ptr<tagGCSECT> compiled(CreateGCSect(section.identifier));
  if (!compiled) return 0;
  const auto isGiven = [](const auto& entry) { return entry->m_RuxEntryData.HasData(); };
  const auto given = std::count_if(section.entries.begin(), section.entries.end(), isGiven);
  compiled->entries.reserve(static_cast<std::size_t>(given));
  for (const auto& entry : section.entries) {
    if (!isGiven(entry)) continue;
    tagGCENTRY record{GetEntryName(entry->identifier, entry->name), {}};
    // An entry without compiled form ends the section: what follows it is left out.
    if (record.identifier == 0) break;
    SetEntryValues(section.identifier, entry->identifier, entry->m_RuxEntryData, record);
    compiled->entries.push_back(std::move(record));
  }
  g_GCHead.push_back(nullptr);
  g_GCHead.back() = compiled.release();
  return 1;
}

}  // namespace

std::uint32_t Compile() {
  Lookups lookups;
  for (const std::vector<CRUXSection*>* head : CRUXSection::m_svpHSection) {
    for (const CRUXSection* section : *head) {
      if (!CompileSection(*section)) break;  // nor are the others of its kind
    }
  }
  return 1;
}

tagGCSECT* CreateGCSect(std::uint32_t sectionId) {
  const SectionKind* kind = FindSourceKind(sectionId);
  return kind && kind->IsCompiled() ? new tagGCSECT{kind->compiled, {}} : nullptr;
}

std::uint32_t GetEntryName(std::uint32_t entryId, const std::string& key) {
  // A name that no table has is added without an index and yields 0.
  switch (entryId) {
#define FIXED_ENTRY(name, keyword, payload, number, compiled) \
  case ENTRY_##name:                                          \
    return RUX_ENTRY_##name;
#define NAMED_ENTRY(name, keyword, payload, number, table, prefix) \
  case ENTRY_##name:                                               \
    return g_tbl##table[key.substr(prefix.size())];
#define PLAIN_ENTRY(name, keyword, payload, number) \
  case ENTRY_##name:                                \
    return 0;
#include "ruxcomp/language/entries.def"
    default:
      return 0;
  }
}

std::uint32_t GetValueVal(const std::string& text) {
  std::uint32_t number = 0;
  if (NumberOrWord(text, number)) return Lookups::Current().Number(number);
  if (text == kPlainValue) return g_tblValue[""];
  if (BeginsWith(text, kValuePrefix)) return g_tblValue[text.substr(kValuePrefix.size())];
  if (BeginsWith(text, kGlobalPrefix)) return g_tblGlobal[text.substr(kGlobalPrefix.size())];
  if (HasPrefix(text, kArgumentPrefix) &&
      StringToLong(text.substr(kArgumentPrefix.size()), number)) {
    return CLASS_Small + number;
  }
  return kNoIndex;
}

namespace {
std::uint32_t generation = 0;
}

std::uint32_t RecordsGeneration() { return generation; }
void CountRecordsGeneration() { ++generation; }

void CompDestory() {
  CountRecordsGeneration();
  for (const tagGCSECT* section : g_GCHead) delete section;
  g_GCHead.clear();
}

std::uint32_t gccOutput(const std::string& path) {
  // Also when a number raises an error on the way.
  struct ReleaseAtEnd {
    ~ReleaseAtEnd() { CompDestory(); }
  } releaseAtEnd;
  std::uint32_t ok = InitTblD() & 1;
  ok &= Compile();
  ok &= WriteMeta(path);
  return ok;
}
