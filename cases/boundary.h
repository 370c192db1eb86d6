// The readings around each limit of a machine, and the band that each is in.
#ifndef CASES_BOUNDARY_H_
#define CASES_BOUNDARY_H_

#include "cases/run.h"
#include "profile/profile.h"
#include "table/forms.h"

namespace rux::cases {

// A row for each limit of a sensor, in the order of the machine: the bands of the reading below it,
// of the limit itself, of the one above, and of the one that is within it again after one beyond
// it. A limit that is not compared has the reason instead.
table::Sheet BoundariesOf(const Bench& bench);

// For forms that have no lines before the table.
void AddProfileColumn(const profile::Profile& profile, table::Sheet& sheet);

}  // namespace rux::cases

#endif  // CASES_BOUNDARY_H_
