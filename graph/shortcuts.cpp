#include "graph/shortcuts.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

#include "graph/graph.h"

namespace rux::graph {
namespace {

// The containers in a walk that meets each before what is in it.
class Containers {
 public:
  explicit Containers(const Graph& graph)
      : to_(Neighbours(graph).to), begins_(graph.nodes.size()), ends_(graph.nodes.size()) {
    std::vector<std::size_t> holders(graph.nodes.size());
    for (const Edge& edge : graph.edges) {
      if (IsContainer(edge.to) && ++holders[edge.to] > 1) return;
    }
    for (std::size_t node = 0; node < graph.nodes.size(); ++node) {
      if (IsContainer(node) && holders[node] == 0) Walk(node);
    }
    // Those of a circle are in none.
    is_forest_ = std::all_of(graph.edges.begin(), graph.edges.end(),
                             [&](const Edge& edge) { return begins_[edge.from] > 0; });
  }

  bool is_forest() const { return is_forest_; }
  bool IsContainer(std::size_t node) const { return !to_[node].empty(); }
  std::size_t begin(std::size_t node) const { return begins_[node]; }
  bool Contains(std::size_t outer, std::size_t inner) const {
    return begins_[outer] < begins_[inner] && ends_[inner] <= ends_[outer];
  }

 private:
  void Walk(std::size_t root) {
    std::vector<std::pair<std::size_t, std::size_t>> open = {{root, 0}};  // with the next node
    begins_[root] = ++count_;
    while (!open.empty()) {
      auto& [node, next] = open.back();
      if (next == to_[node].size()) {
        ends_[node] = count_;
        open.pop_back();
        continue;
      }
      const std::size_t inner = to_[node][next++];
      if (!IsContainer(inner)) continue;
      begins_[inner] = ++count_;
      open.emplace_back(inner, 0);
    }
  }

  const std::vector<std::vector<std::size_t>> to_;
  std::vector<std::size_t> begins_;  // of containers: their numbers in the walk, from 1
  std::vector<std::size_t> ends_;    // of what is in them: the last number
  std::size_t count_ = 0;
  bool is_forest_ = false;
};

}  // namespace

Graph WithoutShortcuts(Graph graph) {
  if (!graph.subject->is_hierarchy) return graph;
  const Containers containers(graph);
  if (!containers.is_forest()) return graph;
  // Of the holders of a node, the one after a shortcut's is inside of it if any is.
  std::vector<std::size_t> order(graph.edges.size());
  std::iota(order.begin(), order.end(), 0);
  std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    const Edge& one = graph.edges[a];
    const Edge& other = graph.edges[b];
    return std::pair(one.to, containers.begin(one.from)) <
           std::pair(other.to, containers.begin(other.from));
  });
  std::vector<bool> is_shortcut(graph.edges.size());
  for (std::size_t i = 1; i < order.size(); ++i) {
    const Edge& edge = graph.edges[order[i - 1]];
    const Edge& next = graph.edges[order[i]];
    is_shortcut[order[i - 1]] = edge.to == next.to && containers.Contains(edge.from, next.from);
  }
  std::vector<Edge> edges;
  for (std::size_t i = 0; i < graph.edges.size(); ++i) {
    if (!is_shortcut[i]) edges.push_back(std::move(graph.edges[i]));
  }
  graph.edges = std::move(edges);
  return graph;
}

}  // namespace rux::graph
