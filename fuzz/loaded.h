// What the library loaded must be what the decoders, who know nothing of it, read.
#ifndef FUZZ_LOADED_H_
#define FUZZ_LOADED_H_

#include "compiled/debug_meta.h"
#include "compiled/meta.h"

namespace fuzz {

// Walks the loaded file along the decoded one, which has no fault, by the queries; ends the process
// where they differ.
void ExpectLoaded(const rux::compiled::CompiledMeta& meta);
void ExpectLoaded(const rux::compiled::DebugMeta& meta);

// Whether a debug meta file without a fault has the list of source files where loading looks for
// it. One that is not the first of its process has none; and INCLUDE sections are passed over, the
// list with them.
bool CanBeLoaded(const rux::compiled::DebugMeta& meta);

}  // namespace fuzz

#endif  // FUZZ_LOADED_H_
