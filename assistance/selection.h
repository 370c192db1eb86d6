// What an editor selects as a selection grows.
#ifndef ASSISTANCE_SELECTION_H_
#define ASSISTANCE_SELECTION_H_

#include <vector>

#include "assistance/place.h"

namespace rux::assistance {

// Each has the one before it inside: the part or key, the value, the item, the section, the file.
std::vector<ByteRange> SelectionsAt(const Place& at);

}  // namespace rux::assistance

#endif  // ASSISTANCE_SELECTION_H_
