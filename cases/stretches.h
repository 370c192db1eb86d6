// Cells of a table that are equal and follow each other.
#ifndef CASES_STRETCHES_H_
#define CASES_STRETCHES_H_

#include <cstdint>

#include "ruxcomp/language/symbols.h"

namespace rux::cases {

// use(index) for the first and the last cell of each stretch of equal ones, in order: where a table
// changes, and so where a mistake is likely.
template <class Cells, class Use>
void ForEachEdgeCell(const Cells& cells, Use use) {
  constexpr std::uint32_t kLast = ruxcomp::language::kTableCells - 1;
  for (std::uint32_t index = 0; index <= kLast; ++index) {
    const bool is_first = index == 0 || cells[index - 1] != cells[index];
    const bool is_last = index == kLast || cells[index + 1] != cells[index];
    if (is_first || is_last) use(index);
  }
}

}  // namespace rux::cases

#endif  // CASES_STRETCHES_H_
