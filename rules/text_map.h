// Tables by texts of scripts. What these texts are, anyone may choose who writes a script: all
// tables take their hash from here.
#ifndef RULES_TEXT_MAP_H_
#define RULES_TEXT_MAP_H_

#include <string_view>

#include "ruxcomp/model/seeded_hash.h"

namespace rux::rules {

using TextHash = ruxcomp::detail::SeededHash;

template <class Value>
using TextMap = ruxcomp::detail::HashMap<std::string_view, Value>;

using TextSet = ruxcomp::detail::HashSet<std::string_view>;

}  // namespace rux::rules

#endif  // RULES_TEXT_MAP_H_
