// The names of the language, unqualified in the library.
#ifndef FRONTEND_IDENTIFIERS_H_
#define FRONTEND_IDENTIFIERS_H_

#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"

namespace ruxcomp::core {

using namespace ruxcomp::language;

using tagNOTATION = Notation;

}  // namespace ruxcomp::core

#endif  // FRONTEND_IDENTIFIERS_H_
