// Scripts that compile as they should, before they are files.
#ifndef IMPORTS_SOUND_H_
#define IMPORTS_SOUND_H_

#include <string>
#include <vector>

#include "imports/layout.h"

namespace rux::imports {

// Throws a Failure that names the place unless `rux check` would find neither errors nor warnings
// in the main script of the folder with these files in it. To be
// called once: the library keeps what it has read.
void ExpectSound(const std::string& folder, const std::vector<ScriptFile>& files);

}  // namespace rux::imports

#endif  // IMPORTS_SOUND_H_
