// Names in a message.
#ifndef DRIVER_LISTED_H_
#define DRIVER_LISTED_H_

#include <cstddef>
#include <string>
#include <vector>

namespace rux::driver {

// How many machines a message names.
inline constexpr std::size_t kMostNamed = 3;

// "a.rux, b.rux and 29 more", with the first `most` names.
std::string Listed(const std::vector<std::string>& names, std::size_t most);

}  // namespace rux::driver

#endif  // DRIVER_LISTED_H_
