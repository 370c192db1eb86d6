#include "diff/order.h"

#include <algorithm>
#include <vector>

#include "diff/kind_matcher.h"

namespace rux::diff {

OrderChange OrderOf(const std::vector<Pair>& pairs) {
  const auto is_before = [](const Pair& a, const Pair& b) { return a.before < b.before; };
  if (std::is_sorted(pairs.begin(), pairs.end(), is_before)) {
    const auto shifted = std::find_if(pairs.begin(), pairs.end(),
                                      [](const Pair& pair) { return pair.before != pair.after; });
    if (shifted == pairs.end()) return {};
    return {Order::kShifted, *shifted, *shifted};
  }
  std::vector<Pair> old_order = pairs;
  std::sort(old_order.begin(), old_order.end(), is_before);
  const auto differ =
      std::mismatch(pairs.begin(), pairs.end(), old_order.begin(),
                    [](const Pair& a, const Pair& b) { return a.before == b.before; });
  return {Order::kReordered, *differ.second, *differ.first};
}

}  // namespace rux::diff
