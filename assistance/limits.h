// The limits of sensors, to be read at a glance.
#ifndef ASSISTANCE_LIMITS_H_
#define ASSISTANCE_LIMITS_H_

#include <string>
#include <vector>

#include "assistance/place.h"
#include "index/index.h"
#include "settings/limit_rule.h"

namespace rux::assistance {

// "FL -5 C | THEORY 45 C | WH 92 C": the limits of a sensor and its THEORY from the lowest up,
// with unit, divisor and sign where the rules have them; empty: it has no limits.
std::string LimitsText(const index::Index& index, Id section,
                       const std::vector<settings::LimitRule>& rules);

}  // namespace rux::assistance

#endif  // ASSISTANCE_LIMITS_H_
