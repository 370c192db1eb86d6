#include "backend/compile_pass.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "backend/symbol_tables.h"
#include "findings/origin.h"
#include "frontend/lifetime.h"
#include "frontend/section.h"
#include "frontend/text_errors.h"
#include "ruxcomp/compile.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/records.h"

namespace ruxcomp::core {

RUX_FROM_LOAD_TO_UNLOAD std::vector<tagGCSECT*> g_GCHead;

std::uint32_t ModelCompiler::CompileSection(const CRUXSection& section) {
  std::unique_ptr<tagGCSECT> compiled(CreateGCSect(section.identifier));
  if (!compiled) return 0;
  const auto given = std::count_if(section.entries.begin(), section.entries.end(), IsGiven);
  compiled->entries.reserve(static_cast<std::size_t>(given));
  for (const auto& entry : section.entries) {
    if (!IsGiven(entry)) continue;
    findings::Examine(section.OriginOf(*entry));
    tagGCENTRY record{GetEntryName(entry->identifier, entry->name), {}};
    // An entry without compiled form ends the section: what follows it is left out.
    if (record.identifier == 0) break;
    SetEntryValues(section.identifier, *entry, record);
    compiled->entries.push_back(std::move(record));
  }
  // `compiled` owns it until there is room: push_back may raise.
  g_GCHead.push_back(nullptr);
  g_GCHead.back() = compiled.release();
  return 1;
}

std::uint32_t Compile() {
  ModelCompiler compiler;
  for (const std::vector<CRUXSection*>* head : CRUXSection::m_svpHSection) {
    for (const CRUXSection* section : *head) {
      if (!compiler.CompileSection(*section)) break;  // nor are the others of its kind
    }
  }
  return 1;
}

tagGCSECT* CreateGCSect(std::uint32_t section_id) {
  const SectionKind* kind = FindSourceKind(section_id);
  return kind && kind->IsCompiled() ? new tagGCSECT{kind->compiled, {}} : nullptr;
}

std::uint32_t GetEntryName(std::uint32_t entry_id, const std::string& key) {
  // A name that no table has is added without an index and yields 0.
  switch (entry_id) {
#define FIXED_ENTRY(name, keyword, payload, number, compiled) \
  case ENTRY_##name:                                          \
    return RUX_ENTRY_##name;
#define NAMED_ENTRY(name, keyword, payload, number, table, prefix) \
  case ENTRY_##name:                                               \
    return g_tbl##table[TextAfter(key, prefix.size())];
#define PLAIN_ENTRY(name, keyword, payload, number) \
  case ENTRY_##name:                                \
    return 0;
#include "ruxcomp/language/entries.def"
    default:
      return 0;
  }
}

namespace {
std::uint32_t generation = 0;
}

std::uint32_t RecordsGeneration() { return generation; }
void InvalidateRecords() { ++generation; }

void CompDestory() {
  InvalidateRecords();
  for (const tagGCSECT* section : g_GCHead) delete section;
  g_GCHead.clear();
}

}  // namespace ruxcomp::core

using namespace ruxcomp::core;

std::uint32_t gccOutput(const std::string& path) {
  // Also when a number raises an error on the way.
  struct ReleaseAtEnd {
    ~ReleaseAtEnd() { CompDestory(); }
  } release_at_end;
  std::uint32_t ok = InitTblD() & 1;
  ok &= Compile();
  ok &= WriteMeta(path);
  return ok;
}
