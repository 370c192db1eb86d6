// A graph laid out: where its nodes, the frames around them and the lines between them are.
#ifndef GRAPH_DRAWING_H_
#define GRAPH_DRAWING_H_

#include <cstddef>
#include <string>
#include <vector>

#include "graph/geometry.h"
#include "graph/graph.h"

namespace rux::graph {

// From the edge of a box to that of another one. A frame has one line for all that is in it.
struct Line {
  std::vector<Point> points;
  std::size_t edge;  // of the graph: one of those that it is for
  bool is_bundle;    // it is for several
  bool has_arrow;    // not in a tree, which is read from the top
};

// What is written in the box of a node: its label, shortened to what fits, and marks that follow.
struct BoxText {
  std::string label;
  std::string marks;  // what is hidden, and whether the node is connected to itself
};

struct Drawing {
  Size size;
  std::vector<Box> nodes;  // by the nodes of the graph
  std::vector<BoxText> texts;
  std::vector<Box> frames;  // around two or more nodes that are connected alike
  std::vector<Line> lines;  // no edge of a node to itself
};

// Boxes do not overlap. Trees are drawn as such and no lines of theirs cross; all else is drawn
// from left to right. Takes time by the nodes and edges and, to sort them, their logarithms.
Drawing Draw(const Graph& graph);

}  // namespace rux::graph

#endif  // GRAPH_DRAWING_H_
