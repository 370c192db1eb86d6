// Hierarchies without what can be seen anyway.
#ifndef GRAPH_SHORTCUTS_H_
#define GRAPH_SHORTCUTS_H_

#include "graph/graph.h"

namespace rux::graph {

// A hierarchy without the edges from a container to what another one inside of it contains. What is
// no hierarchy stays as it is, and so does one in which a container is in several others.
Graph WithoutShortcuts(Graph graph);

}  // namespace rux::graph

#endif  // GRAPH_SHORTCUTS_H_
