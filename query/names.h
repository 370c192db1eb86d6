// How the entries of a section carry an ID and names.
#ifndef QUERY_NAMES_H_
#define QUERY_NAMES_H_

#include <cstdint>

#include "ruxcomp/record_rules.h"
#include "ruxcomp/records.h"

// The table index that an entry offers as the ID, or as a name, of a section of that kind; null
// when it offers none.
inline const std::uint32_t* OfferedId(const tagGCENTRY& entry) {
  return ruxcomp::OfferedId(entry.identifier, entry.values.empty() ? nullptr : &entry.values[0]);
}
inline const std::uint32_t* OfferedName(std::uint32_t kind, const tagGCENTRY& entry) {
  return ruxcomp::OfferedName(kind, entry.identifier,
                              entry.values.empty() ? nullptr : &entry.values[0]);
}

#endif  // QUERY_NAMES_H_
