// The paths of scripts, as the system takes them.
#ifndef SOURCES_SCRIPT_PATH_H_
#define SOURCES_SCRIPT_PATH_H_

#include <string>

namespace rux::sources {

// The name under which the reader finds the file of one of the library's paths.
std::string ToOpenablePath(const std::string& library_path);

}  // namespace rux::sources

#endif  // SOURCES_SCRIPT_PATH_H_
