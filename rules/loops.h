// Loops of things that refer to each other.
#ifndef RULES_LOOPS_H_
#define RULES_LOOPS_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace rux::rules {

// One thing refers to another; they are numbers from 0 on.
struct Edge {
  std::uint32_t from;
  std::uint32_t to;
};

// Calls use(loop) with the edges of a loop, as places in `edges`: each leads to where the next one
// begins, and the last one to where the first one begins. There may be more loops than any program
// can list: each reported one has an edge that is the last one of no other, and without these edges
// there would be no loop at all. Takes linear time besides what use() takes.
//
// The edges are sorted by `from`. The loop is valid during use().
struct Loop {
  const std::uint32_t* first;
  std::size_t count;

  const std::uint32_t* begin() const { return first; }
  const std::uint32_t* end() const { return first + count; }
};
void ForEachLoop(const std::vector<Edge>& edges, std::uint32_t node_count,
                 const std::function<void(const Loop& loop)>& use);

}  // namespace rux::rules

#endif  // RULES_LOOPS_H_
