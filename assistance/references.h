// What refers to the name at a place.
#ifndef ASSISTANCE_REFERENCES_H_
#define ASSISTANCE_REFERENCES_H_

#include <vector>

#include "assistance/place.h"

namespace rux::assistance {

// In the order in which the library reads them. Those to a section may be by its NAME or its ID.
std::vector<Location> ReferencesAt(const Place& at, bool with_definitions);

}  // namespace rux::assistance

#endif  // ASSISTANCE_REFERENCES_H_
