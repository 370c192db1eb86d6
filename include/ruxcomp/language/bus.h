// The words of a bus access that a script spells and the checks know.
#ifndef RUXCOMP_LANGUAGE_BUS_H_
#define RUXCOMP_LANGUAGE_BUS_H_

#include <string_view>

namespace ruxcomp::language {

// The bus type and the base address that an access to an SMBUS device gives.
inline constexpr std::string_view kSmbus = "BUSTYPE_SMBUS";
inline constexpr std::string_view kSmbusBaseAddress = "0x00";

// The bus type whose accesses have the base address 0: a simple I/O port is its own address.
inline constexpr std::string_view kSimpleIoPort = "BUSTYPE_SIMPLEIOPORT";

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_BUS_H_
