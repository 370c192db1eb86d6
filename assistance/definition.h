// Where the name at a place is defined.
#ifndef ASSISTANCE_DEFINITION_H_
#define ASSISTANCE_DEFINITION_H_

#include <vector>

#include "assistance/place.h"

namespace rux::assistance {

// The definitions that the library takes for what is referred to. At a definition, itself; of an ID
// that lists have, the lists. Of a file, its beginning.
std::vector<Location> DefinitionsAt(const Place& at);

}  // namespace rux::assistance

#endif  // ASSISTANCE_DEFINITION_H_
