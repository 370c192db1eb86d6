// All differences between two machines.
#ifndef DIFF_COMPARE_H_
#define DIFF_COMPARE_H_

#include <vector>

#include "diff/change.h"
#include "machine/machine.h"

namespace rux::diff {

// In the order of the kinds; of each kind what is gone, then section by section of the new machine,
// then what is said of their order. The reverse comparison has the mirror of each change. Table
// indices, times and the layout of the files make no difference.
std::vector<Change> Compare(const machine::Machine& before, const machine::Machine& after);

}  // namespace rux::diff

#endif  // DIFF_COMPARE_H_
