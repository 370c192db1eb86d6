// All messages about scripts.
#ifndef DRIVER_MESSAGES_H_
#define DRIVER_MESSAGES_H_

#include "diagnostics/registry.h"

namespace rux::driver {

inline constexpr ruxcomp::findings::MessageRow kIncludeFirst = {
    "",
    "include-first",
    ruxcomp::findings::Level::kLoss,
    "the debug meta file cannot be loaded, because an INCLUDE comes first",
    "With -g, rux compile also writes a debug meta file. When the first section of the script is "
    "an "
    "INCLUDE, the list of source files is stored in a place where no host finds it, and loading "
    "the "
    "file fails. Put another section first, such as MORVRUX.",
    R"([INCLUDE]
FILE = machine.rux
)",
    R"([PROPERTY]
Height = 2
[INCLUDE]
FILE = machine.rux
)"};
inline constexpr const ruxcomp::findings::MessageRow* kRows[] = {&kIncludeFirst};

// Of the library and its reader, of runs, of the rules, and the classes of changes.
const diagnostics::Registry& AllMessages();

}  // namespace rux::driver

#endif  // DRIVER_MESSAGES_H_
