// The two ways in which connected units are laid out.
#ifndef GRAPH_LAYOUTS_H_
#define GRAPH_LAYOUTS_H_

#include <cstddef>
#include <vector>

#include "graph/geometry.h"
#include "graph/units.h"

namespace rux::graph {

// Units that links connect, and all these links. In a component of its own, units are given by
// their numbers there.
struct Component {
  std::vector<std::size_t> units;  // of all units
  std::vector<UnitLink> links;     // between places in that list
};
std::vector<Component> ComponentsOf(const Units& units);
// Whether there is exactly one way to each unit from one of them.
bool IsTree(const Component& component);

// Where they are in a block of their own.
struct Block {
  bool has_arrows;
  Size size;
  std::vector<Point> at;                  // by the units of the component
  std::vector<std::vector<Point>> lines;  // by its links
};

// Each unit above what is contained in it, which is in columns; lines have right angles.
Block LayOutTree(const Units& units, const Component& component);
// Layers from left to right; straight lines with bends where they pass a layer.
Block LayOutLayers(const Units& units, const Component& component);

}  // namespace rux::graph

#endif  // GRAPH_LAYOUTS_H_
