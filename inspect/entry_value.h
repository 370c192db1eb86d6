// The values of a compiled entry, by the names of their parts.
#ifndef INSPECT_ENTRY_VALUE_H_
#define INSPECT_ENTRY_VALUE_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "compiled/datum.h"
#include "ruxcomp/model.h"

namespace rux::inspect {

struct EntryPart {
  std::string name;  // empty: the whole of an entry that has no named parts
  bool is_list;
  std::vector<compiled::Datum> items;
};

struct EntryValue {
  std::optional<std::uint32_t> type;  // of a value or global entry
  std::vector<EntryPart> parts;
};

// Value, global and repeater entries have the parts that the library's selectors pick; what no
// selector fits is one part "Values". All other entries are one nameless part.
EntryValue ValueOf(const ruxcomp::Entry& entry);

}  // namespace rux::inspect

#endif  // INSPECT_ENTRY_VALUE_H_
