#include "graph/drawing.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "graph/geometry.h"
#include "graph/graph.h"
#include "graph/layouts.h"
#include "graph/shape.h"
#include "graph/units.h"

namespace rux::graph {

std::vector<Component> ComponentsOf(const Units& units) {
  constexpr auto kNone = static_cast<std::size_t>(-1);
  struct Place {
    std::size_t component = kNone;
    std::size_t number = 0;  // in it
  };
  std::vector<std::vector<std::size_t>> neighbours(units.size());
  for (const UnitLink& link : units.links()) {
    neighbours[link.from].push_back(link.to);
    neighbours[link.to].push_back(link.from);
  }
  std::vector<Component> components;
  std::vector<Place> places(units.size());
  const auto is_placed = [&](std::size_t unit) { return places[unit].component != kNone; };
  const auto add = [&](std::size_t unit) {
    if (is_placed(unit)) return;
    places[unit] = {components.size() - 1, components.back().units.size()};
    components.back().units.push_back(unit);
  };
  for (std::size_t first = 0; first < units.size(); ++first) {
    if (is_placed(first)) continue;
    const std::vector<std::size_t>& members = components.emplace_back().units;
    add(first);
    std::size_t next = 0;
    while (next < members.size()) {
      for (const std::size_t other : neighbours[members[next++]]) add(other);
    }
  }
  for (const UnitLink& link : units.links()) {
    components[places[link.from].component].links.push_back(
        {places[link.from].number, places[link.to].number, link.edge});
  }
  return components;
}

bool IsTree(const Component& component) {
  std::vector<bool> is_contained(component.units.size());
  for (const UnitLink& link : component.links) {
    if (is_contained[link.to]) return false;
    is_contained[link.to] = true;
  }
  // They are connected.
  return component.links.size() + 1 == component.units.size();
}

namespace {

struct LaidOut {
  Component component;
  Block block;
};

void Place(const Units& units, const LaidOut& laid_out, Point at, Drawing& drawing) {
  const auto& [component, block] = laid_out;
  for (std::size_t i = 0; i < component.units.size(); ++i)
    units.Place(component.units[i], at + block.at[i], drawing);
  for (std::size_t i = 0; i < component.links.size(); ++i) {
    const UnitLink& link = component.links[i];
    const bool is_bundle =
        units[component.units[link.from]].is_frame() || units[component.units[link.to]].is_frame();
    Line line{{}, link.edge, is_bundle, block.has_arrows};
    for (const Point& point : block.lines[i]) {
      if (line.points.empty() || !(line.points.back() == at + point))
        line.points.push_back(at + point);
    }
    drawing.lines.push_back(std::move(line));
  }
}

// Trees are in their own order. All else fills columns better if the widest come first.
std::vector<LaidOut> LayOutAll(const Units& units, bool is_hierarchy) {
  std::vector<LaidOut> all;
  for (Component& component : ComponentsOf(units)) {
    Block block = is_hierarchy && IsTree(component) ? LayOutTree(units, component)
                                                    : LayOutLayers(units, component);
    all.push_back({std::move(component), std::move(block)});
  }
  if (is_hierarchy) return all;
  std::stable_sort(all.begin(), all.end(), [](const LaidOut& one, const LaidOut& other) {
    return one.block.size.width > other.block.size.width;
  });
  return all;
}

}  // namespace

Drawing Draw(const Graph& graph) {
  constexpr Size kGap{40, 24};
  const Units units(graph);
  const std::vector<LaidOut> all = LayOutAll(units, graph.subject->is_hierarchy);
  std::vector<Size> sizes;
  sizes.reserve(all.size());
  for (const LaidOut& laid_out : all) sizes.push_back(laid_out.block.size);
  const Columns columns = InColumns(sizes, kGap);
  Drawing drawing{columns.size, std::vector<Box>(graph.nodes.size()), units.texts(), {}, {}};
  for (std::size_t i = 0; i < all.size(); ++i) Place(units, all[i], columns.at[i], drawing);
  return drawing;
}

}  // namespace rux::graph
