// What becomes of each difference between a machine and a list in the scripts of the machine.
#ifndef RECONCILE_EDIT_PLAN_H_
#define RECONCILE_EDIT_PLAN_H_

#include <cstddef>

#include "reconcile/adopt.h"
#include "reconcile/compare.h"

namespace rux::reconcile {

// The edits for the differences before that one; those of limits may be passed over. Reads the
// scripts. Throws a Failure when one cannot be read. The comparison must outlive the result.
Adoption PlanEdits(const Comparison& comparison, bool has_limits, std::size_t end);

}  // namespace rux::reconcile

#endif  // RECONCILE_EDIT_PLAN_H_
