// Loading a meta file and finding its sections.
#include <cstring>

#include "backend/compile_pass.h"
#include "backend/meta_file.h"
#include "backend/symbol_tables.h"
#include "query/result.h"
#include "ruxcomp/query.h"

namespace {

// Calls visit(section) for the sections of a kind in file order until one answers true, which is
// the result. Null when none does; `any` tells whether there was one of the kind.
template <class Visit>
tagGCSECT* FindSection(std::uint32_t kind, bool& any, Visit visit) {
  any = false;
  for (tagGCSECT* section : g_GCHead) {
    if (section->identifier != kind) continue;
    any = true;
    if (visit(*section)) return section;
  }
  return nullptr;
}

// Whether an index stands for that name; counts the names that were compared.
bool IsNamed(std::uint32_t index, const char* name, std::uint32_t& compared) {
  const tagTBLDATA data = GetTblData(index);
  if (data.kind != RUX_DATA_STRING) return false;
  ++compared;
  return std::strcmp(data.data.string, name) == 0;
}

// Kinds whose entries are called by names of the script's own.
bool HasNamedEntries(std::uint32_t kind) {
  return kind == RUX_SECT_PROPERTY || kind == RUX_SECT_GLOBAL || kind == RUX_SECT_REPEATER;
}

bool CarriesName(const tagGCSECT& section, const char* name, std::uint32_t& compared) {
  for (const tagGCENTRY& entry : section.entries) {
    if (entry.identifier == RUX_ENTRY_NAME && !entry.values.empty()) {
      if (IsNamed(entry.values.front(), name, compared)) return true;
    } else if (HasNamedEntries(section.identifier)) {
      if (IsNamed(entry.identifier, name, compared)) return true;
    }
  }
  return false;
}

bool CarriesId(const tagGCSECT& section, std::uint32_t id, std::uint32_t& compared) {
  for (const tagGCENTRY& entry : section.entries) {
    if (entry.identifier != RUX_ENTRY_ID || entry.values.empty()) continue;
    const tagTBLDATA data = GetTblData(entry.values.front());
    ++compared;
    if (data.kind == RUX_DATA_NUMBER && data.data.number == id) return true;
  }
  return false;
}

}  // namespace

std::uint32_t gcInit(const std::string& path, tagMETAFILEINFO* info) {
  const std::uint32_t read = ReadMeta(path, info);
  return Result(read ? RUX_ERROR_OK : RUX_ERROR_CANNOT_READ, read);
}

std::uint32_t gcUnInit() {
  CompDestory();
  return 1;
}

std::uint32_t gcGetSectCount(std::uint32_t section) {
  std::uint32_t count = 0;
  for (const tagGCSECT* each : g_GCHead) count += each->identifier == section ? 1 : 0;
  return Result(RUX_ERROR_OK, count);
}

GCSECTION gcGetSectByIndex(std::uint32_t section, std::uint32_t ordinal) {
  bool any = false;
  tagGCSECT* found = FindSection(section, any, [&](const tagGCSECT&) { return ordinal-- == 0; });
  return Result(found ? RUX_ERROR_OK : any ? RUX_ERROR_OUT_OF_RANGE : RUX_ERROR_NO_SECTION, found);
}

GCSECTION gcGetSectByID(std::uint32_t section, std::uint32_t id) {
  bool any = false;
  std::uint32_t compared = 0;
  tagGCSECT* found = FindSection(
      section, any, [&](const tagGCSECT& each) { return CarriesId(each, id, compared); });
  return Result(found      ? RUX_ERROR_OK
                : !any     ? RUX_ERROR_NO_SECTION
                : compared ? RUX_ERROR_ID_NOT_FOUND
                           : RUX_ERROR_NO_IDS,
                found);
}

GCSECTION gcGetSectByName(std::uint32_t section, const char* name) {
  if (!name) name = "";
  bool any = false;
  std::uint32_t compared = 0;
  tagGCSECT* found = FindSection(
      section, any, [&](const tagGCSECT& each) { return CarriesName(each, name, compared); });
  return Result(found      ? RUX_ERROR_OK
                : !any     ? RUX_ERROR_NO_SECTION
                : compared ? RUX_ERROR_NAME_NOT_FOUND
                           : RUX_ERROR_NO_NAMES,
                found);
}

std::uint32_t gcGetGroupIndex(const char* name) {
  if (!name) name = "";
  const auto* group = static_cast<const tagGCSECT*>(gcGetSectByName(RUX_SECT_GROUP, name));
  if (!group) {
    // The root group has an index but no section.
    if (std::strcmp(name, "0") == 0) return Result(RUX_ERROR_OK, std::uint32_t{0});
    return Result(RUX_ERROR_NO_SECTION, kNoNumber);
  }
  for (const tagGCENTRY& entry : group->entries) {
    if (entry.identifier != RUX_ENTRY_NAME || entry.values.empty()) continue;
    return Result(RUX_ERROR_OK, OrdinalOf(entry.values.front()));
  }
  return Result(RUX_ERROR_NO_NAMES, kNoNumber);
}
