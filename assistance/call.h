// Calls of actions.
#ifndef ASSISTANCE_CALL_H_
#define ASSISTANCE_CALL_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "assistance/place.h"
#include "index/index.h"
#include "ruxcomp/language/values.h"

namespace rux::assistance {

// No call that one wants to see spelled out has more.
inline constexpr std::uint32_t kMostArguments = 32;

// How many arguments an action takes, by its section; at most as many as are spelled out.
std::uint32_t ArgumentsOf(const index::Index& index, Id section);

// How many arguments the action takes that the parts of a value call; none when they call none that
// is known. `first`: the first part of the record.
std::optional<std::uint32_t> ArgumentsOfCall(const index::Index& index,
                                             const language::ValueType& type,
                                             const std::vector<std::string_view>& parts,
                                             std::size_t first);

// "ARG1"
std::string ArgumentText(std::uint32_t number);

}  // namespace rux::assistance

#endif  // ASSISTANCE_CALL_H_
