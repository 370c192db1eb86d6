// How the entries of a section carry an ID and names.
#ifndef QUERY_NAMES_H_
#define QUERY_NAMES_H_

#include <cstdint>

#include "ruxcomp/identifiers.h"
#include "ruxcomp/records.h"

// Kinds whose entries are called by names of the script's own.
constexpr bool HasNamedEntries(std::uint32_t kind) {
  return kind == RUX_SECT_PROPERTY || kind == RUX_SECT_GLOBAL || kind == RUX_SECT_REPEATER;
}

// The table index that an entry offers as the ID, or as a name, of a section of that kind; null
// when it offers none.
inline const std::uint32_t* OfferedId(const tagGCENTRY& entry) {
  return entry.identifier == RUX_ENTRY_ID && !entry.values.empty() ? &entry.values.front()
                                                                   : nullptr;
}
inline const std::uint32_t* OfferedName(std::uint32_t kind, const tagGCENTRY& entry) {
  if (entry.identifier == RUX_ENTRY_NAME && !entry.values.empty()) return &entry.values.front();
  return HasNamedEntries(kind) ? &entry.identifier : nullptr;
}

#endif  // QUERY_NAMES_H_
