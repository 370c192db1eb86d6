// Which sections and globals call which actions.
#ifndef ASSISTANCE_CALLS_H_
#define ASSISTANCE_CALLS_H_

#include <string>
#include <vector>

#include "assistance/place.h"
#include "index/index.h"

namespace rux::assistance {

// A section, or one global of it, and the places of calls: in it, or of it.
struct Calls {
  Id section;
  Id global;  // a definition; kNone: the section
  std::vector<ByteRange> places;
};

// The action whose name is at the place; kNone: none that is defined.
Id ActionAt(const Place& at);

// What calls an action, with the places in it; the actions that the global or else the section at
// the place calls, with the places there.
std::vector<Calls> CallersOf(const index::Index& index, Id action);
std::vector<Calls> CallsAt(const Place& at);

}  // namespace rux::assistance

#endif  // ASSISTANCE_CALLS_H_
