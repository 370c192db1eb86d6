// Parts of graphs that are small enough to look at. What they leave out is counted: in all, and at
// each node that is connected to it.
#ifndef GRAPH_BOUNDS_H_
#define GRAPH_BOUNDS_H_

#include <cstddef>
#include <vector>

#include "graph/graph.h"

namespace rux::graph {

// The nodes that are up to `depth` edges away from one of the centers, whichever way the edges
// lead.
Graph Around(Graph graph, const std::vector<std::size_t>& centers, std::size_t depth);

// At most that many nodes; 0: all. Of nodes that are connected alike, the last one is for those
// that are too many. If this is not enough, what contains nothing is left out, or what nothing
// uses; then the nodes that are far from the centers or, without any, from where edges begin.
Graph Bounded(Graph graph, std::size_t most);

}  // namespace rux::graph

#endif  // GRAPH_BOUNDS_H_
