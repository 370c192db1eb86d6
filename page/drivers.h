// What drives what a sensor measures: rarely anything that the sensor itself refers to.
#ifndef PAGE_DRIVERS_H_
#define PAGE_DRIVERS_H_

#include "page/contents.h"
#include "page/effects.h"
#include "page/html.h"

namespace rux::page {

// A paragraph for each action that likely drives what the sensor measures; nothing for other
// things. The machine does not say what belongs together, but names and groups do: the sensor's
// name has a word of the action's, and a group above the sensor runs the action.
void WriteDrivers(const Contents& contents, const Effects& effects, Thing thing, Html& out);

}  // namespace rux::page

#endif  // PAGE_DRIVERS_H_
