// The shape of what is drawn.
#ifndef GRAPH_SHAPE_H_
#define GRAPH_SHAPE_H_

#include <vector>

#include "graph/geometry.h"

namespace rux::graph {

// How much wider than high a drawing should be, to fit a screen.
inline constexpr double kShape = 1.6;

// Where blocks are that fill columns from top to bottom, in their order.
struct Columns {
  std::vector<Point> at;  // by blocks
  Size size;
};

// As many columns as give about that shape, of heights as equal as can be. The gap is between
// neighbours.
Columns InColumns(const std::vector<Size>& blocks, Size gap);

}  // namespace rux::graph

#endif  // GRAPH_SHAPE_H_
