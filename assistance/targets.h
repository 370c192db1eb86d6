// The symbols that a place in a file is about.
#ifndef ASSISTANCE_TARGETS_H_
#define ASSISTANCE_TARGETS_H_

#include <vector>

#include "assistance/place.h"
#include "index/index.h"
#include "index/records.h"

namespace rux::assistance {

// Whether such symbols are names. What is in a list is none: it names something else.
bool IsName(const index::Symbol& symbol);

// The symbols whose names are at the place, those that are referred to first.
std::vector<Id> SymbolsAt(const Place& at);

// The same; of a section, whichever of its NAME and ID is there.
std::vector<Id> SymbolsOfThingsAt(const Place& at);

}  // namespace rux::assistance

#endif  // ASSISTANCE_TARGETS_H_
