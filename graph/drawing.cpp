#include "graph/drawing.h"

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

void Place(const Units& units, const Component& component, const Block& block, Point at,
           Drawing& drawing) {
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

}  // namespace

Drawing Draw(const Graph& graph) {
  constexpr Size kGap{40, 24};
  const Units units(graph);
  const std::vector<Component> components = ComponentsOf(units);
  std::vector<Block> blocks;
  std::vector<Size> sizes;
  for (const Component& component : components) {
    const bool is_tree = graph.subject->is_hierarchy && IsTree(component);
    blocks.push_back(is_tree ? LayOutTree(units, component) : LayOutLayers(units, component));
    sizes.push_back(blocks.back().size);
  }
  const Columns columns = InColumns(sizes, kGap);
  Drawing drawing{columns.size, std::vector<Box>(graph.nodes.size()), units.texts(), {}, {}};
  for (std::size_t i = 0; i < components.size(); ++i)
    Place(units, components[i], blocks[i], columns.at[i], drawing);
  return drawing;
}

}  // namespace rux::graph
