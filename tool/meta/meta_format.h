// What the tool itself knows of the layout of meta files: enough to tell a whole one from a cut one
// and why a file cannot be loaded.
#ifndef TOOL_META_META_FORMAT_H_
#define TOOL_META_META_FORMAT_H_

#include <string>

namespace rux {

// Whether the file goes exactly to the end of its last block: writing stopped early otherwise.
bool IsWholeMetaFile(const std::string& path);

// Why the library does not load a file, for people.
std::string WhyNotLoaded(const std::string& path);

}  // namespace rux

#endif  // TOOL_META_META_FORMAT_H_
