// The other places in a file that have the name at a place.
#ifndef ASSISTANCE_HIGHLIGHTS_H_
#define ASSISTANCE_HIGHLIGHTS_H_

#include <vector>

#include "assistance/place.h"

namespace rux::assistance {

struct Highlight {
  ByteRange range;
  bool is_definition;
};

std::vector<Highlight> HighlightsAt(const Place& at);

}  // namespace rux::assistance

#endif  // ASSISTANCE_HIGHLIGHTS_H_
