// Opening the files that a command reads whole.
#ifndef SUPPORT_INPUT_FILE_H_
#define SUPPORT_INPUT_FILE_H_

#include <string>

#include "support/descriptor.h"

namespace rux::support {

// The path that stands for standard input.
inline constexpr char kStandardInput[] = "-";

// Opens a file to load it. Named pipes, sockets and devices are refused without being opened: that
// may wait for ever, and some devices act on it. What this process was given open is taken whatever
// it is, under its names -, /dev/stdin, /dev/fd/N and /proc/self/fd/N. Throws a Failure.
Descriptor OpenInput(const std::string& path);

}  // namespace rux::support

#endif  // SUPPORT_INPUT_FILE_H_
