// The readings around each limit of a machine, and the band that each is in.
#ifndef CASES_BOUNDARY_H_
#define CASES_BOUNDARY_H_

#include "cases/run.h"
#include "table/forms.h"

namespace rux::cases {

// A row for each limit that the profile counts, in the order of the machine: the bands of the
// reading below it, of the limit itself, of the one above.
table::Sheet BoundariesOf(const Bench& bench);

}  // namespace rux::cases

#endif  // CASES_BOUNDARY_H_
