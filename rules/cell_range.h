// Ranges of cells as other languages write them.
#ifndef RULES_CELL_RANGE_H_
#define RULES_CELL_RANGE_H_

#include <string>
#include <string_view>

namespace rux::rules {

// "0.39" for a key such as 0..39, 0-39 or "0 to 39"; empty for one that a row can have, and for one
// that does not look like a range of cells.
std::string MeantCells(std::string_view key);

}  // namespace rux::rules

#endif  // RULES_CELL_RANGE_H_
