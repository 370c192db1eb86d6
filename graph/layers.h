// Connected units in layers: lines lead from one layer to the next, but for those that close a
// circle, which lead back.
#ifndef GRAPH_LAYERS_H_
#define GRAPH_LAYERS_H_

#include <cstddef>
#include <vector>

#include "graph/layouts.h"

namespace rux::graph {

// A place in a layer: of a unit, or of a line that passes the layer.
struct Slot {
  std::size_t unit;  // of the component; kPassing: a line
  std::size_t layer;
  std::vector<std::size_t> before;  // the slots in earlier layers that lines lead to, and in later
  std::vector<std::size_t> after;

  static constexpr std::size_t kPassing = static_cast<std::size_t>(-1);
  bool is_passing() const { return unit == kPassing; }
};

struct Layering {
  std::vector<Slot> slots;                       // those of the units first, in their order
  std::vector<std::vector<std::size_t>> layers;  // slots, ordered so that few lines cross
  std::vector<std::vector<std::size_t>>
      paths;                  // by links: the slots from layer to layer, or the ends
  std::vector<bool> is_back;  // by links: the path goes from `to` to `from`
};

// Takes time by units and links: a line that passes very many layers has no slots in them.
Layering LayersOf(const Component& component);

}  // namespace rux::graph

#endif  // GRAPH_LAYERS_H_
