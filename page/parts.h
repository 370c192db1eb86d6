// The parts of the page of a machine, in their order. Each writes a whole section, or nothing when
// the machine has nothing to say there.
#ifndef PAGE_PARTS_H_
#define PAGE_PARTS_H_

#include "page/contents.h"
#include "page/effects.h"
#include "page/html.h"
#include "page/limit_bands.h"

namespace rux::page {

// What the machine is: counts, facts, actions with what calls them.
void WriteOverview(const Contents& contents, const Effects& effects, Html& out);

// What differs from the other machine.
void WriteChanges(const Contents& contents, Html& out);

// What check and lint find.
void WriteFindings(const Contents& contents, Html& out);

// GROUPs and PELMGROUPs with their sensors.
void WriteTrees(const Contents& contents, Html& out);

// All sensors as a table.
void WriteSensorTable(const Contents& contents, const LimitBands& bands, Html& out);

// What the values access: buses with their registers, and by what.
void WriteAccesses(const Contents& contents, Html& out);

// Every thing with all that is known of it, kind by kind.
void WriteCards(const Contents& contents, const Effects& effects, const LimitBands& bands,
                Html& out);

// The links to the parts that there are.
void WriteNavigation(const Contents& contents, Html& out);

}  // namespace rux::page

#endif  // PAGE_PARTS_H_
