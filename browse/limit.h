// What the number of a limit means.
#ifndef BROWSE_LIMIT_H_
#define BROWSE_LIMIT_H_

#include <cstdint>
#include <optional>
#include <string>

#include "machine/machine.h"
#include "ruxcomp/model/handles.h"

namespace rux::browse {

struct Limit {
  std::uint32_t number;  // as it is stored
  machine::Quantity quantity;

  // "-4.5 C"
  std::string Amount() const { return quantity.TextOf(number); }
  // "-4.5 C (signed)", where that is known.
  std::string Text() const;
};

// None for an entry that is not a limit, or has no number.
std::optional<Limit> LimitIn(const machine::Machine& machine, const ruxcomp::Section& section,
                             const ruxcomp::Entry& entry);

}  // namespace rux::browse

#endif  // BROWSE_LIMIT_H_
