// Which sections call which actions.
#ifndef ASSISTANCE_CALLS_H_
#define ASSISTANCE_CALLS_H_

#include <string>
#include <vector>

#include "assistance/place.h"
#include "index/index.h"

namespace rux::assistance {

// A section, and the places of calls: in it, or of it.
struct Calls {
  Id section;
  std::vector<ByteRange> places;
};

// The action whose name is at the place; kNone: none that is defined.
Id ActionAt(const Place& at);

// The sections that call an action, with the places in them; the actions that a section calls, with
// the places in that section.
std::vector<Calls> CallersOf(const index::Index& index, Id action);
std::vector<Calls> CallsIn(const index::Index& index, Id section);

}  // namespace rux::assistance

#endif  // ASSISTANCE_CALLS_H_
