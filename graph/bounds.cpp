#include "graph/bounds.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <utility>
#include <vector>

#include "graph/graph.h"
#include "graph/twins.h"

namespace rux::graph {
namespace {

constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

// A graph of other nodes, before any edge is added.
Graph WithoutNodes(const Graph& graph) {
  return {graph.machine, graph.subject, {}, {}, graph.left_out};
}

void CountLeftOut(const Node& node, Graph& graph) {
  if (node.rest == 0) ++graph.left_out[node.thing.kind];  // a rest has been counted
}

Graph Keep(const Graph& graph, const std::vector<bool>& is_kept) {
  Graph part = WithoutNodes(graph);
  std::vector<std::size_t> numbers(graph.nodes.size(), kNowhere);
  for (std::size_t node = 0; node < graph.nodes.size(); ++node) {
    if (!is_kept[node]) {
      CountLeftOut(graph.nodes[node], part);
      continue;
    }
    numbers[node] = part.nodes.size();
    part.nodes.push_back(graph.nodes[node]);
  }
  std::set<std::pair<std::size_t, std::size_t>> hidden;  // a kept node and one that is not
  for (const Edge& edge : graph.edges) {
    if (is_kept[edge.from] && is_kept[edge.to]) {
      part.edges.push_back({numbers[edge.from], numbers[edge.to], edge.reasons});
    } else if (is_kept[edge.from]) {
      hidden.emplace(edge.from, edge.to);
    } else if (is_kept[edge.to]) {
      hidden.emplace(edge.to, edge.from);
    }
  }
  for (const auto& [kept, other] : hidden) {
    const Node& node = graph.nodes[other];
    part.nodes[numbers[kept]].hidden[node.thing.kind] += node.count();
  }
  return part;
}

// The nodes in the order of their distance from the first ones, with that distance, whichever way
// edges lead. Those that cannot be reached are not among them.
struct Reached {
  std::vector<std::size_t> nodes;
  std::vector<std::size_t> distances;  // by nodes
};

Reached Reach(const Graph& graph, const std::vector<std::size_t>& first) {
  const Neighbours neighbours(graph);
  Reached reached{{}, std::vector<std::size_t>(graph.nodes.size(), kNowhere)};
  const auto reach = [&](std::size_t node, std::size_t distance) {
    if (reached.distances[node] != kNowhere) return;
    reached.distances[node] = distance;
    reached.nodes.push_back(node);
  };
  for (const std::size_t node : first) reach(node, 0);
  for (std::size_t i = 0; i < reached.nodes.size(); ++i) {
    const std::size_t node = reached.nodes[i];
    for (const auto* ends : {&neighbours.to, &neighbours.from}) {
      for (const std::size_t other : (*ends)[node]) reach(other, reached.distances[node] + 1);
    }
  }
  return reached;
}

// What a part of a graph begins with: the centers or, without any, the nodes that no edge leads to.
// Where all are in circles, any node will do.
std::vector<std::size_t> BeginningOf(const Graph& graph) {
  const Neighbours neighbours(graph);
  std::vector<std::size_t> centers;
  std::vector<std::size_t> sources;
  for (std::size_t node = 0; node < graph.nodes.size(); ++node) {
    if (graph.nodes[node].is_center) centers.push_back(node);
    if (neighbours.from[node].empty()) sources.push_back(node);
  }
  if (!centers.empty()) return centers;
  return sources.empty() ? std::vector<std::size_t>{0} : sources;
}

// The most nodes of a class that may be shown, the rest as one of them, for at most `most` in all;
// 1 if that is impossible.
std::size_t LargestClass(const std::vector<std::vector<std::size_t>>& classes, std::size_t most) {
  const auto count = [&](std::size_t largest) {
    std::size_t sum = 0;
    for (const auto& nodes : classes) sum += std::min(nodes.size(), largest);
    return sum;
  };
  std::size_t fits = 1;
  std::size_t too_large = most + 1;
  while (too_large - fits > 1) {
    const std::size_t middle = fits + (too_large - fits) / 2;
    (count(middle) <= most ? fits : too_large) = middle;
  }
  return fits;
}

// The last ones of large classes as one node.
Graph Contracted(const Graph& graph, const std::vector<std::vector<std::size_t>>& classes,
                 std::size_t largest) {
  std::vector<std::size_t> first(graph.nodes.size());  // the node, or the first one of its rest
  std::vector<std::size_t> rests(graph.nodes.size());
  for (const std::vector<std::size_t>& nodes : classes) {
    for (std::size_t i = 0; i < nodes.size(); ++i)
      first[nodes[i]] = nodes[std::min(i, largest - 1)];
    if (nodes.size() > largest) rests[nodes[largest - 1]] = nodes.size() - largest + 1;
  }
  Graph part = WithoutNodes(graph);
  std::vector<std::size_t> numbers(graph.nodes.size(), kNowhere);
  for (std::size_t node = 0; node < graph.nodes.size(); ++node) {
    const Node& original = graph.nodes[node];
    if (first[node] == node) {
      numbers[node] = part.nodes.size();
      part.nodes.push_back(original);
      if (rests[node] > 0) part.nodes.back() = {browse::Thing{original.thing.kind}, rests[node]};
    }
    if (first[node] != node || rests[node] > 0) CountLeftOut(original, part);
  }
  for (const Edge& edge : graph.edges) {
    if (first[edge.from] != edge.from || first[edge.to] != edge.to) continue;
    part.edges.push_back({numbers[edge.from], numbers[edge.to], edge.reasons});
    if (rests[edge.from] + rests[edge.to] == 0) continue;
    for (Reason& reason : part.edges.back().reasons) reason.place.reset();
  }
  return part;
}

// Without what contains nothing and, where edges lead from users to what they use, without what
// nothing uses.
Graph WithoutPeriphery(const Graph& graph) {
  const Neighbours neighbours(graph);
  const auto& inwards = graph.subject->is_hierarchy ? neighbours.from : neighbours.to;
  const auto& outwards = graph.subject->is_hierarchy ? neighbours.to : neighbours.from;
  std::vector<bool> is_kept(graph.nodes.size());
  for (std::size_t node = 0; node < graph.nodes.size(); ++node) {
    is_kept[node] = graph.nodes[node].is_center || !outwards[node].empty() || inwards[node].empty();
  }
  return Keep(graph, is_kept);
}

}  // namespace

Graph Around(Graph graph, const std::vector<std::size_t>& centers, std::size_t depth) {
  for (const std::size_t node : centers) graph.nodes[node].is_center = true;
  const Reached reached = Reach(graph, centers);
  std::vector<bool> is_kept(graph.nodes.size());
  for (const std::size_t node : reached.nodes) is_kept[node] = reached.distances[node] <= depth;
  return Keep(graph, is_kept);
}

Graph Bounded(Graph graph, std::size_t most) {
  if (most == 0 || graph.nodes.size() <= most) return graph;
  const std::vector<std::vector<std::size_t>> classes = TwinsOf(graph);
  const std::size_t largest = LargestClass(classes, most);
  graph = largest > 1 ? Contracted(graph, classes, largest) : WithoutPeriphery(graph);
  if (graph.nodes.size() <= most) return graph;
  const std::vector<std::size_t> nodes = Reach(graph, BeginningOf(graph)).nodes;
  std::vector<bool> is_kept(graph.nodes.size());
  for (std::size_t i = 0; i < std::min(most, nodes.size()); ++i) is_kept[nodes[i]] = true;
  return Keep(graph, is_kept);
}

}  // namespace rux::graph
