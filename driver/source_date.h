// The time that compiled files say they were created at.
#ifndef DRIVER_SOURCE_DATE_H_
#define DRIVER_SOURCE_DATE_H_

#include <cstdint>
#include <optional>

namespace rux::driver {

// What the environment variable SOURCE_DATE_EPOCH sets, so that the same sources give the same
// bytes at any time; nothing when it is not there. Throws a Failure of wrong usage when it is no
// number of seconds since 1970 that the files can hold.
std::optional<std::uint32_t> SourceDateEpoch();

}  // namespace rux::driver

#endif  // DRIVER_SOURCE_DATE_H_
