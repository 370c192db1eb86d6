#include "rules/pelmgroup_tree.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace rux::rules {
namespace {

bool IsSmallerId(const Parents::value_type& a, const Parents::value_type& b) {
  return a.first < b.first;
}

}  // namespace

void SortById(Parents& parents) {
  std::stable_sort(parents.begin(), parents.end(), IsSmallerId);
  const auto is_same = [](const auto& a, const auto& b) { return a.first == b.first; };
  parents.erase(std::unique(parents.begin(), parents.end(), is_same), parents.end());
}

std::size_t FindId(const Parents& parents, std::uint32_t id) {
  const auto found =
      std::lower_bound(parents.begin(), parents.end(), std::pair(id, 0U), IsSmallerId);
  const bool is_there = found != parents.end() && found->first == id;
  return is_there ? static_cast<std::size_t>(found - parents.begin()) : parents.size();
}

std::size_t FindParent(const Parents& parents, std::size_t group) {
  const auto [id, parent] = parents[group];
  return id == 0 || parent == 0 ? parents.size() : FindId(parents, parent);
}

PelmgroupTree::PelmgroupTree(Parents parents) : parents_(std::move(parents)) {
  SortById(parents_);
  nodes_.resize(parents_.size());
  std::vector<std::vector<std::size_t>> children(parents_.size());
  std::vector<std::size_t> roots;
  for (std::size_t i = 0; i < parents_.size(); ++i) {
    const std::size_t parent = FindParent(parents_, i);
    std::vector<std::size_t>& siblings = parent == parents_.size() ? roots : children[parent];
    siblings.push_back(i);
  }
  for (const std::size_t root : roots) Number(root, children);
}

// Numbers a group and all below it, each before those below it. No recursion: a script may nest
// them as deep as it likes.
void PelmgroupTree::Number(std::size_t root,
                           const std::vector<std::vector<std::size_t>>& children) {
  struct Step {
    std::size_t group;
    std::size_t next_child;
  };
  std::vector<Step> path;
  const auto enter = [&](std::size_t group) {
    nodes_[group].begin = ++next_;
    nodes_[group].depth = path.size();
    path.push_back({group, 0});
  };
  enter(root);
  while (!path.empty()) {
    Step& step = path.back();
    if (step.next_child < children[step.group].size()) {
      enter(children[step.group][step.next_child++]);
    } else {
      nodes_[step.group].end = next_;
      path.pop_back();
    }
  }
}

std::size_t PelmgroupTree::DepthOf(std::uint32_t id) const {
  const std::size_t group = FindId(parents_, id);
  return group == parents_.size() ? 0 : nodes_[group].depth;
}

bool PelmgroupTree::IsAbove(std::uint32_t above, std::uint32_t id) const {
  if (above == id) return true;
  const std::size_t upper = FindId(parents_, above);
  const std::size_t lower = FindId(parents_, id);
  if (upper == parents_.size() || lower == parents_.size()) return false;
  // Those in loops have no number.
  return nodes_[upper].begin != 0 && nodes_[upper].begin <= nodes_[lower].begin &&
         nodes_[lower].begin <= nodes_[upper].end;
}

}  // namespace rux::rules
