// The last-error word, the entries of a section, their values by ordinal and by selector, and the
// cells of a table.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

#include "backend/symbol_tables.h"
#include "query/name_matcher.h"
#include "query/result.h"
#include "ruxcomp/data.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/query.h"
#include "ruxcomp/record_rules.h"
#include "ruxcomp/records.h"

namespace ruxcomp::core {

namespace {

constexpr GCENTRY kNoEntry = nullptr;

tagGCSECT* Section(GCSECTION handle) { return static_cast<tagGCSECT*>(handle); }

// Found: stores the identifier for the caller who asked for it.
GCENTRY Found(tagGCENTRY& entry, std::uint32_t* identifier) {
  if (identifier) *identifier = entry.identifier;
  return Result(RUX_ERROR_OK, GCENTRY{&entry});
}

constexpr tagTBLDATA kNothing = {RUX_DATA_NONE, kNoNumber, {nullptr}};

const tagGCENTRY* Entry(GCENTRY handle) { return static_cast<const tagGCENTRY*>(handle); }

tagTBLDATA Resolved(std::uint32_t value) {
  const tagTBLDATA data = GetTblData(value);
  return Result(data.kind == RUX_DATA_NONE ? RUX_ERROR_UNRESOLVED : RUX_ERROR_OK, data);
}

}  // namespace

}  // namespace ruxcomp::core

using namespace ruxcomp::core;

std::uint32_t gcGetEntryCount(GCSECTION section) {
  if (!section) return Result(RUX_ERROR_NO_SECTION, kNoNumber);
  return Result(RUX_ERROR_OK, static_cast<std::uint32_t>(Section(section)->entries.size()));
}

GCENTRY gcGetEntryByType(GCSECTION section, std::uint32_t identifier) {
  if (!section) return Result(RUX_ERROR_NO_SECTION, kNoEntry);
  for (tagGCENTRY& entry : Section(section)->entries) {
    if (entry.identifier == identifier) return Found(entry, nullptr);
  }
  return Result(RUX_ERROR_NO_ENTRY, kNoEntry);
}

GCENTRY gcGetEntryByIndex(GCSECTION section, std::uint32_t ordinal, std::uint32_t* identifier) {
  if (!section) return Result(RUX_ERROR_NO_SECTION, kNoEntry);
  std::vector<tagGCENTRY>& entries = Section(section)->entries;
  // An empty section also answers with the range code, which is part of the interface, pinned by
  // tests/api/query_entries_test.cpp.
  if (ordinal >= entries.size()) return Result(RUX_ERROR_OUT_OF_RANGE, kNoEntry);
  return Found(entries[ordinal], identifier);
}

GCENTRY gcGetEntryByName(GCSECTION section, const char* name, std::uint32_t* identifier) {
  if (!section) return Result(RUX_ERROR_NO_SECTION, kNoEntry);
  std::vector<tagGCENTRY>& entries = Section(section)->entries;
  if (entries.empty()) return Result(RUX_ERROR_NO_ENTRY, kNoEntry);
  NameMatcher sought(name ? name : "");
  for (tagGCENTRY& entry : entries) {
    if (sought(entry.identifier)) return Found(entry, identifier);
  }
  return Result(RUX_ERROR_NAME_NOT_FOUND, kNoEntry);
}

std::uint32_t gcGetTableData(std::uint32_t ordinal, std::uint8_t* cells) {
  constexpr std::size_t kCells = RUX_TABLE_CELLS;
  // Comparing with the end of the table would overflow for a large ordinal where addresses are
  // short.
  if (ordinal >= g_tblTableData.size() / kCells) return Result(RUX_ERROR_OUT_OF_RANGE, 0u);
  std::copy_n(g_tblTableData.data() + ordinal * kCells, kCells, cells);
  return Result(RUX_ERROR_OK, 1u);
}

std::uint32_t gcGetValueCount(GCENTRY entry) {
  if (!entry) return Result(RUX_ERROR_NO_ENTRY, kNoNumber);
  return Result(RUX_ERROR_OK, static_cast<std::uint32_t>(Entry(entry)->values.size()));
}

tagTBLDATA gcGetValueByIndex(GCENTRY entry, std::uint32_t ordinal) {
  if (!entry) return Result(RUX_ERROR_NO_ENTRY, kNothing);
  const auto& values = Entry(entry)->values;
  if (values.empty()) return Result(RUX_ERROR_NO_VALUE, kNothing);
  if (ordinal >= values.size()) return Result(RUX_ERROR_OUT_OF_RANGE, kNothing);
  return Resolved(values[ordinal]);
}

tagTBLDATA gcGetValueByID(GCENTRY entry, std::uint32_t selector) {
  if (!entry) return Result(RUX_ERROR_NO_ENTRY, kNothing);
  const tagGCENTRY& record = *Entry(entry);
  const auto type = [&record]() -> std::optional<std::uint32_t> {
    const tagTBLDATA first = GetTblData(record.values.front());
    if (first.kind != RUX_DATA_NUMBER) return std::nullopt;
    return first.data.number;
  };
  const ruxcomp::Selection selected =
      ruxcomp::Select(record.identifier, record.values.size(), selector, type);
  if (selected.code != RUX_ERROR_OK) return Result(selected.code, kNothing);
  return Resolved(record.values[selected.ordinal]);
}

extern "C" {
std::uint32_t g_dwLastError = 0;
}

void gcSetLastError(std::uint32_t code) { g_dwLastError = code; }

std::uint32_t gcGetLastError() { return g_dwLastError; }
