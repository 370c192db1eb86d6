// The tree that the PIDs of PELMGROUPs make.
#ifndef RULES_PELMGROUP_TREE_H_
#define RULES_PELMGROUP_TREE_H_

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace rux::rules {

// The parent of each ID, by ID.
using Parents = std::vector<std::pair<std::uint32_t, std::uint32_t>>;

// Sorts them, and keeps the first parent of each ID.
void SortById(Parents& parents);

// Where an ID is in them; their count for one that is not.
std::size_t FindId(const Parents& parents, std::uint32_t id);

// Where the parent of a group is in them; their count when there is none: a PID of 0 names no
// group.
std::size_t FindParent(const Parents& parents, std::size_t group);

class PelmgroupTree {
 public:
  explicit PelmgroupTree(Parents parents);

  // How many groups are above that one; 0 for one that is unknown or part of a loop.
  std::size_t DepthOf(std::uint32_t id) const;

  // Whether going up from the group `id` leads to `above`, or both are the same.
  bool IsAbove(std::uint32_t above, std::uint32_t id) const;

 private:
  // The groups below one have the numbers between `begin` and `end`.
  struct Node {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t depth = 0;
  };

  void Number(std::size_t root, const std::vector<std::vector<std::size_t>>& children);

  Parents parents_;
  std::vector<Node> nodes_;  // in the order of parents_
  std::size_t next_ = 0;
};

}  // namespace rux::rules

#endif  // RULES_PELMGROUP_TREE_H_
