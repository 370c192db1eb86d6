// Sections and items as the text of a script.
#ifndef DECOMPILE_SCRIPT_TEXT_H_
#define DECOMPILE_SCRIPT_TEXT_H_

#include <string>
#include <vector>

#include "decompile/script_sections.h"

namespace rux::decompile {

// Begins with a comment that says what debug meta files do not keep. The comment is the same for
// every script, so that decompiling what a decompiled script compiles to gives that script again.
//
// Key and parts of an item come out of a script as they went in, provided that a script can say
// them at all (obstacles.h). Parts get double quotes only where they need them.
std::string ScriptText(const std::vector<ScriptSection>& sections);

}  // namespace rux::decompile

#endif  // DECOMPILE_SCRIPT_TEXT_H_
