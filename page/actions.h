// Actions, with what makes them run.
#ifndef PAGE_ACTIONS_H_
#define PAGE_ACTIONS_H_

#include "page/contents.h"
#include "page/effects.h"
#include "page/html.h"

namespace rux::page {

// First those by which the machine does something: what calls them, and the readings that decide
// whether or with what; then those that readings call.
void WriteActions(const Contents& contents, const Effects& effects, Html& out);

}  // namespace rux::page

#endif  // PAGE_ACTIONS_H_
