// What no compiled file exceeds.
#ifndef COMPILED_LIMITS_H_
#define COMPILED_LIMITS_H_

#include <cstddef>

namespace rux::compiled {

inline constexpr std::size_t kMostFileBytes = std::size_t{256} << 20;

// An index has 24 bits for the ordinal.
inline constexpr std::size_t kMostTableItems = std::size_t{1} << 24;

// Of sections, each with a block of a debug meta file at most.
inline constexpr std::size_t kMostKinds = 0
#define SECTION(keyword, kind, notation, form, naming, uniqueness) +1
#include "ruxcomp/language/sections.def"
    ;

}  // namespace rux::compiled

#endif  // COMPILED_LIMITS_H_
