// The values of an entry of a script, in the form of compiled ones.
#ifndef INSPECT_DEBUG_VALUE_H_
#define INSPECT_DEBUG_VALUE_H_

#include "compiled/debug_meta.h"
#include "inspect/entry_value.h"

namespace rux::inspect {

// With the numbers and the type as the script wrote them. The entry must have been given.
EntryValue ValueOf(const compiled::DebugMeta& meta, const compiled::DebugSection& section,
                   const compiled::DebugEntry& entry);

}  // namespace rux::inspect

#endif  // INSPECT_DEBUG_VALUE_H_
