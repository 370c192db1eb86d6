#include "graph/twins.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <tuple>
#include <utility>
#include <vector>

#include "graph/graph.h"
#include "ruxcomp/language/sections.h"

namespace rux::graph {

std::vector<std::vector<std::size_t>> TwinsOf(const Graph& graph) {
  using Ends = std::vector<std::size_t>;
  using Connections = std::tuple<const language::SectionKind*, bool, Ends, Ends>;
  Neighbours neighbours(graph);
  std::map<Connections, std::size_t> numbers;
  std::vector<std::vector<std::size_t>> classes;
  for (std::size_t node = 0; node < graph.nodes.size(); ++node) {
    Ends& to = neighbours.to[node];
    Ends& from = neighbours.from[node];
    std::sort(to.begin(), to.end());
    std::sort(from.begin(), from.end());
    Connections connections(graph.nodes[node].thing.kind, graph.nodes[node].is_center,
                            std::move(to), std::move(from));
    const auto [place, is_new] = numbers.emplace(std::move(connections), classes.size());
    if (is_new) classes.emplace_back();
    classes[place->second].push_back(node);
  }
  return classes;
}

}  // namespace rux::graph
