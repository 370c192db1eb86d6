// The keys of the rows of a table: one cell, "17", or a range of cells, "16.31".
#ifndef RUXCOMP_LANGUAGE_CELLS_H_
#define RUXCOMP_LANGUAGE_CELLS_H_

#include <cstddef>
#include <string_view>

namespace ruxcomp::language {

// The numbers of the first and the last cell, as written; of one cell, twice the same.
struct CellRange {
  std::string_view low;
  std::string_view high;
};

constexpr CellRange SplitCellRange(std::string_view key) {
  const std::size_t dot = key.find('.');
  return {key.substr(0, dot), dot == std::string_view::npos ? key : key.substr(dot + 1)};
}

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_CELLS_H_
