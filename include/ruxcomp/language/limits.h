// What the limits of a sensor have to do with each other.
#ifndef RUXCOMP_LANGUAGE_LIMITS_H_
#define RUXCOMP_LANGUAGE_LIMITS_H_

#include "ruxcomp/language/entries.h"

namespace ruxcomp::language {

// The limits and the reading that is expected, from the lowest up.
inline constexpr EntryId kLimitsUpwards[] = {ENTRY_THRESHOLD_FL, ENTRY_THRESHOLD_WL, ENTRY_THEORY,
                                             ENTRY_THRESHOLD_WH, ENTRY_THRESHOLD_FH};

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_LIMITS_H_
