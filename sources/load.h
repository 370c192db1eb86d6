// Reading a script without compiling it.
#ifndef SOURCES_LOAD_H_
#define SOURCES_LOAD_H_

#include <string>

#include "sources/source_set.h"

namespace rux::sources {

// Reads the script, by the library's path of it, and follows its INCLUDE items as the library does.
// Nothing is reported. Pipes and devices are passed over: their texts are for the library. No
// archive may live, and no script be open.
SourceSet Load(const std::string& library_path);

}  // namespace rux::sources

#endif  // SOURCES_LOAD_H_
