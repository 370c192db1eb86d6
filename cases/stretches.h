// Cells of a table that are equal and follow each other.
#ifndef CASES_STRETCHES_H_
#define CASES_STRETCHES_H_

#include <cstdint>

#include "ruxcomp/language/symbols.h"

namespace rux::cases {

// use(first, last) for each stretch, in order.
template <class Cells, class Use>
void ForEachStretch(const Cells& cells, Use use) {
  for (std::uint32_t first = 0; first < ruxcomp::language::kTableCells;) {
    std::uint32_t last = first;
    while (last + 1 < ruxcomp::language::kTableCells && cells[last + 1] == cells[first]) ++last;
    use(first, last);
    first = last + 1;
  }
}

}  // namespace rux::cases

#endif  // CASES_STRETCHES_H_
