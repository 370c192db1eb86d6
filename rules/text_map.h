// Tables by texts of scripts. What these texts are, anyone may choose who writes a script: all
// tables take their hash from here.
#ifndef RULES_TEXT_MAP_H_
#define RULES_TEXT_MAP_H_

#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "ruxcomp/model/hash_index.h"

namespace rux::rules {

using TextHash = ruxcomp::detail::SeededHash;

template <class Value>
using TextMap = std::unordered_map<std::string_view, Value, TextHash>;

using TextSet = std::unordered_set<std::string_view, TextHash>;

}  // namespace rux::rules

#endif  // RULES_TEXT_MAP_H_
