// Why files that a script includes are missing.
#ifndef DIAGNOSTICS_INCLUDE_NOTES_H_
#define DIAGNOSTICS_INCLUDE_NOTES_H_

#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/locator.h"

namespace rux::diagnostics {

// The library only warns that a file could not be loaded. Adds a note with the reason behind each
// such warning, and one at the end that sends people there from the errors that come of it. Takes
// diagnostics that are located.
void AddNotesOnIncludes(Locator& locator, std::vector<Diagnostic>& diagnostics);

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_INCLUDE_NOTES_H_
