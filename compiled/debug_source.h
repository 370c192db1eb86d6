// The name of the script in a debug meta file.
#ifndef COMPILED_DEBUG_SOURCE_H_
#define COMPILED_DEBUG_SOURCE_H_

#include <string>
#include <string_view>

namespace rux::compiled {

// Gives the first of the source files another path. The bytes are those of a sound debug meta file
// with a list of source files, or of one without sections, which stays as it is.
void RenameScript(std::string& bytes, std::string_view path);

}  // namespace rux::compiled

#endif  // COMPILED_DEBUG_SOURCE_H_
