#include "fuzz/walk.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <variant>
#include <vector>

#include "backend/compile_pass.h"
#include "backend/symbol_tables.h"
#include "fuzz/target.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/query.h"
#include "ruxcomp/records.h"

using namespace ruxcomp::core;

namespace fuzz {
namespace {

tagTBLDATA DataOf(const std::string& key, std::uint32_t index) {
  tagTBLDATA data = {RUX_DATA_STRING, index, {nullptr}};
  data.data.string = key.c_str();
  return data;
}

tagTBLDATA DataOf(std::uint32_t key, std::uint32_t index) {
  tagTBLDATA data = {RUX_DATA_NUMBER, index, {nullptr}};
  data.data.number = key;
  // The largest number reads as none.
  return key == 0xFFFFFFFF ? tagTBLDATA{RUX_DATA_NONE, index, {nullptr}} : data;
}

tagTBLDATA Resolve(std::uint32_t index) {
  const std::uint32_t base = index & 0xFF000000;
  if (base >= RUX_CLASS_Small && base <= RUX_CLASS_Operator) return DataOf(index - base, index);
  tagTBLDATA data = {RUX_DATA_NONE, index, {nullptr}};
  for (const SymbolTable& row : kSymbolTables) {
    if (row.base != base) continue;
    std::visit(
        [&](const auto* table) {
          for (const auto& [key, keyIndex] : *table) {
            if (keyIndex == index) data = DataOf(key, index);
          }
        },
        row.table);
  }
  return data;
}

bool AreEqual(const tagTBLDATA& one, const tagTBLDATA& other) {
  if (one.kind != other.kind || one.index != other.index) return false;
  if (one.kind == RUX_DATA_NUMBER) return one.data.number == other.data.number;
  return one.kind == RUX_DATA_NONE || one.data.string == other.data.string;
}

bool IsText(const tagTBLDATA& data, const std::string& text) {
  return data.kind == RUX_DATA_STRING && text == data.data.string;
}

// What a walk over the sections of a kind came to so far.
struct Walk {
  tagGCSECT* found = nullptr;
  bool anySection = false;
  bool anyCompared = false;

  std::uint32_t Code(std::uint32_t others_compared, std::uint32_t none_compared) const {
    if (found) return RUX_ERROR_OK;
    if (!anySection) return RUX_ERROR_NO_SECTION;
    return anyCompared ? others_compared : none_compared;
  }
};

// Calls look(section, walk), which may note what it found, for the sections of a kind.
template <class Look>
Walk WalkSections(std::uint32_t kind, Look look) {
  Walk walk;
  for (tagGCSECT* section : g_GCHead) {
    if (section->identifier != kind || walk.found) continue;
    walk.anySection = true;
    look(*section, walk);
  }
  return walk;
}

bool HasNamedEntries(std::uint32_t kind) {
  return kind == RUX_SECT_PROPERTY || kind == RUX_SECT_GLOBAL || kind == RUX_SECT_REPEATER;
}

}  // namespace

void ExpectSectionById(std::uint32_t kind, std::uint32_t id) {
  const Walk walk = WalkSections(kind, [&](tagGCSECT& section, Walk& so_far) {
    for (const tagGCENTRY& entry : section.entries) {
      if (entry.identifier != RUX_ENTRY_ID || entry.values.empty()) continue;
      const tagTBLDATA data = Resolve(entry.values.front());
      so_far.anyCompared = true;
      if (data.kind == RUX_DATA_NUMBER && data.data.number == id) so_far.found = &section;
    }
  });
  Expect(gcGetSectByID(kind, id) == walk.found, "the first section with an ID is found");
  Expect(gcGetLastError() == walk.Code(RUX_ERROR_ID_NOT_FOUND, RUX_ERROR_NO_IDS),
         "the last error says why there is no section with the ID");
}

void ExpectSectionByName(std::uint32_t kind, const std::string& name) {
  const Walk walk = WalkSections(kind, [&](tagGCSECT& section, Walk& so_far) {
    for (const tagGCENTRY& entry : section.entries) {
      const bool has_name = entry.identifier == RUX_ENTRY_NAME && !entry.values.empty();
      if (!has_name && !HasNamedEntries(kind)) continue;
      const tagTBLDATA data = Resolve(has_name ? entry.values.front() : entry.identifier);
      so_far.anyCompared |= data.kind == RUX_DATA_STRING;
      if (IsText(data, name)) so_far.found = &section;
    }
  });
  Expect(gcGetSectByName(kind, name) == walk.found, "the first section with a name is found");
  Expect(gcGetLastError() == walk.Code(RUX_ERROR_NAME_NOT_FOUND, RUX_ERROR_NO_NAMES),
         "the last error says why there is no section with the name");
}

void ExpectEntryByName(GCSECTION section, const std::string& name) {
  tagGCENTRY* expected = nullptr;
  for (tagGCENTRY& entry : static_cast<tagGCSECT*>(section)->entries) {
    if (!expected && IsText(Resolve(entry.identifier), name)) expected = &entry;
  }
  std::uint32_t identifier = 0;
  Expect(gcGetEntryByName(section, name, &identifier) == expected,
         "the first entry with a name is found");
  Expect(!expected || identifier == expected->identifier, "an entry comes with its identifier");
}

void ExpectValue(GCENTRY entry, std::uint32_t ordinal) {
  const tagTBLDATA expected = Resolve(static_cast<tagGCENTRY*>(entry)->values[ordinal]);
  Expect(AreEqual(gcGetValueByIndex(entry, ordinal), expected), "values are looked up right");
  Expect(gcGetLastError() == (expected.kind ? RUX_ERROR_OK : RUX_ERROR_UNRESOLVED),
         "the last error says whether a value can be looked up");
}

}  // namespace fuzz
