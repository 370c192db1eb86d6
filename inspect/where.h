// Where a script said what a path leads to.
#ifndef INSPECT_WHERE_H_
#define INSPECT_WHERE_H_

#include <string>
#include <vector>

#include "compiled/debug_meta.h"
#include "inspect/debug_find.h"
#include "inspect/path.h"
#include "support/json.h"
#include "support/terminal.h"

namespace rux::inspect {

// What there is at the path (debug_find.h); of a path that is a kind alone, all sections of the
// kind, or all entries that define words. Throws a Failure, also when the file does not name the
// source files.
std::vector<DebugFound> FindPlaces(const std::string& file, const compiled::DebugMeta& meta,
                                   const std::vector<PathStep>& path);

// A line for each: "boards/cpu.rux:12: [SENSOR] #0x101 CPU0_TEMP" for a section, and
// "boards/cpu.rux:20: [SENSOR] THRESHOLD_FH = 100" for an entry.
std::string PlacesText(const compiled::DebugMeta& meta, const std::vector<DebugFound>& places,
                       support::OutputStyle style);

// The members that docs/where.schema.json describes.
void WritePlaces(support::JsonObject& json, const std::string& file,
                 const compiled::DebugMeta& meta, const std::vector<DebugFound>& places);

}  // namespace rux::inspect

#endif  // INSPECT_WHERE_H_
