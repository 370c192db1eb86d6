// What would mend a line, where its text leaves no doubt.
#ifndef ADVICE_FIXES_H_
#define ADVICE_FIXES_H_

#include "diagnostics/diagnostic.h"
#include "sources/source_set.h"

namespace rux::advice {

// Of messages of the library.
void AddFix(const sources::SourceSet& sources, diagnostics::Diagnostic& diagnostic);

}  // namespace rux::advice

#endif  // ADVICE_FIXES_H_
