#include "backend/compile_pass.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "backend/symbol_tables.h"
#include "findings/origin.h"
#include "frontend/entry.h"
#include "frontend/lifetime.h"
#include "frontend/section.h"
#include "frontend/text_errors.h"
#include "ruxcomp/compile.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/records.h"

namespace ruxcomp::core {

RUX_FROM_LOAD_TO_UNLOAD std::vector<tagGCSECT*> g_GCHead;

namespace {
void Append(std::uint32_t identifier, std::uint32_t count, std::vector<std::uint32_t>& words) {
  words.push_back(identifier);
  words.push_back(count);
}

// The word at `place` becomes the number of words after it.
void StoreCountAt(std::size_t place, std::vector<std::uint32_t>& words) {
  words[place] = static_cast<std::uint32_t>(words.size() - place - 1);
}
}  // namespace

std::uint32_t ModelCompiler::CompileSection(const CRUXSection& section) {
  const SectionKind* kind = FindSourceKind(section.identifier);
  if (!kind || !kind->IsCompiled()) return 0;
  std::vector<std::uint32_t>& words = out_.words;
  Append(kind->compiled, 0, words);
  const std::size_t count_at = words.size() - 1;
  for (const CRUXEntry* entry : section.entries) {
    if (!IsGiven(entry)) continue;
    // An entry without compiled form ends the section: what follows it is left out.
    if (!CompileEntry(section, *entry)) break;
    ++words[count_at];
  }
  ++out_.count;
  return 1;
}

bool ModelCompiler::CompileEntry(const CRUXSection& section, const CRUXEntry& entry) {
  findings::Examine(section.OriginOf(entry));
  const std::uint32_t identifier = GetEntryName(entry);
  if (identifier == 0) return false;
  Append(identifier, 0, out_.words);
  const std::size_t count_at = out_.words.size() - 1;
  SetEntryValues(section.identifier, entry);
  StoreCountAt(count_at, out_.words);
  return true;
}

void Compile(CompiledSections& out) {
  ModelCompiler compiler(out);
  try {
    for (const std::vector<CRUXSection*>* head : CRUXSection::m_svpHSection) {
      for (const CRUXSection* section : *head) {
        if (!compiler.CompileSection(*section)) break;  // no section of the kind is compiled
      }
    }
  } catch (...) {
    compiler.Finish();  // later runs continue the indices of this one
    throw;
  }
  compiler.Finish();
}

std::uint32_t ModelCompiler::GetEntryName(const CRUXEntry& entry) {
  // A name that no table has is added without an index and yields 0.
  switch (entry.identifier) {
#define FIXED_ENTRY(name, keyword, payload, number, compiled) \
  case ENTRY_##name:                                          \
    return RUX_ENTRY_##name;
#define NAMED_ENTRY(row, keyword, payload, number, table, prefix) \
  case ENTRY_##row:                                               \
    return interner_.Name<CLASS_##table>(TextAfter(entry.name, (prefix).size()));
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
  // Also when a number raises an error.
  struct ReleaseAtEnd {
    ~ReleaseAtEnd() { CompDestory(); }
  } release_at_end;
  const std::uint32_t ok = InitTblD() & 1;
  CompiledSections compiled;
  Compile(compiled);
  return ok & WriteMeta(path, compiled);
}
