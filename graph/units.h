// What is placed as one: a node, or a frame with nodes that are connected alike.
#ifndef GRAPH_UNITS_H_
#define GRAPH_UNITS_H_

#include <cstddef>
#include <vector>

#include "graph/drawing.h"
#include "graph/geometry.h"
#include "graph/graph.h"

namespace rux::graph {

struct Unit {
  std::vector<std::size_t> nodes;
  std::size_t columns;  // in which a frame has its nodes
  Size cell;            // the box of one of them
  Size size;

  bool is_frame() const { return nodes.size() > 1; }
  // How far below its upper edge a line from the left meets it: in the middle of the first node.
  int attach() const;
};

// A line between two units: all edges between their nodes in that direction.
struct UnitLink {
  std::size_t from;
  std::size_t to;
  std::size_t edge;  // the first of them
};

class Units {
 public:
  explicit Units(const Graph& graph);

  std::size_t size() const { return units_.size(); }
  const Unit& operator[](std::size_t unit) const { return units_[unit]; }
  // None leads from a unit to itself, and no two have the same ends.
  const std::vector<UnitLink>& links() const { return links_; }
  const std::vector<BoxText>& texts() const { return texts_; }  // by nodes

  // Adds the boxes and the frame of a unit.
  void Place(std::size_t unit, Point at, Drawing& drawing) const;

 private:
  std::vector<Unit> units_;
  std::vector<UnitLink> links_;
  std::vector<BoxText> texts_;
};

}  // namespace rux::graph

#endif  // GRAPH_UNITS_H_
