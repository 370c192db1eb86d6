#include "rules/loops.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace rux::rules {
namespace {

// Follows the edges depth first. Each node is entered once; the path to the one that is examined is
// kept here and not on the stack, which a long chain would exhaust.
class LoopSearch {
 public:
  LoopSearch(const std::vector<Edge>& edges, std::uint32_t node_count,
             const std::function<void(const Loop& loop)>& use)
      : edges_(edges), use_(use), next_(node_count + 1), depths_(node_count, kNew) {
    for (const Edge& edge : edges) ++next_[edge.from + 1];
    for (std::uint32_t node = 0; node < node_count; ++node) next_[node + 1] += next_[node];
  }

  void Start(std::uint32_t node) {
    if (depths_[node] != kNew) return;
    depths_[node] = 0;
    while (true) {
      if (HasNext(node)) {
        node = Follow(next_[node]++);
        continue;
      }
      depths_[node] = kDone;
      if (path_.empty()) return;
      node = edges_[path_.back()].from;
      path_.pop_back();
    }
  }

 private:
  static constexpr std::uint32_t kNew = 0xFFFFFFFF;
  static constexpr std::uint32_t kDone = 0xFFFFFFFE;

  bool HasNext(std::uint32_t node) const {
    return next_[node] < edges_.size() && edges_[next_[node]].from == node;
  }

  // Returns the node to go on at.
  std::uint32_t Follow(std::uint32_t at) {
    const auto [from, to] = edges_[at];
    std::uint32_t& depth = depths_[to];
    if (depth == kDone) return from;
    path_.push_back(at);
    if (depth == kNew) {
      depth = static_cast<std::uint32_t>(path_.size());
      return to;
    }
    use_({path_.data() + depth, path_.size() - depth});
    path_.pop_back();
    return from;
  }

  const std::vector<Edge>& edges_;
  const std::function<void(const Loop& loop)>& use_;
  std::vector<std::uint32_t> next_;    // of each node, the edge to follow next
  std::vector<std::uint32_t> depths_;  // how many edges lead to each node of the path
  std::vector<std::uint32_t> path_;
};

}  // namespace

void ForEachLoop(const std::vector<Edge>& edges, std::uint32_t node_count,
                 const std::function<void(const Loop& loop)>& use) {
  LoopSearch walk(edges, node_count, use);
  for (std::uint32_t node = 0; node < node_count; ++node) walk.Start(node);
}

}  // namespace rux::rules
