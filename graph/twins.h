// Nodes that are connected alike.
#ifndef GRAPH_TWINS_H_
#define GRAPH_TWINS_H_

#include <cstddef>
#include <vector>

#include "graph/graph.h"

namespace rux::graph {

// The nodes in classes: those of a class are of one kind, all of them centers or none, and each is
// connected to the same others in the same ways. Whoever is connected to one of them is connected
// to all. In the order of the nodes, both the classes, by their first ones, and the nodes of each.
std::vector<std::vector<std::size_t>> TwinsOf(const Graph& graph);

}  // namespace rux::graph

#endif  // GRAPH_TWINS_H_
