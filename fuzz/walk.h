// The searching queries in their simplest form: walks over everything that is loaded. However fast
// the library finds something, it must be what they find, and with the same last-error code.
#ifndef FUZZ_WALK_H_
#define FUZZ_WALK_H_

#include <cstdint>
#include <string>

#include "ruxcomp/query.h"

namespace fuzz {

// Each asks the library for the same and ends the process when its answer is another one.
void ExpectSectionById(std::uint32_t kind, std::uint32_t id);
void ExpectSectionByName(std::uint32_t kind, const std::string& name);
void ExpectEntryByName(GCSECTION section, const std::string& name);
void ExpectValue(GCENTRY entry, std::uint32_t ordinal);

}  // namespace fuzz

#endif  // FUZZ_WALK_H_
