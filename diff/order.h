// Whether what two machines have in common has other ordinals.
#ifndef DIFF_ORDER_H_
#define DIFF_ORDER_H_

#include <optional>
#include <vector>

#include "diff/kind_matcher.h"

namespace rux::diff {

enum class Order { kSame, kShifted, kReordered };

struct OrderChange {
  Order order = Order::kSame;
  // What comes first of that: the same pair for what is shifted; for what is in another order, what
  // the old machine has where the new one has another.
  Pair before = {};
  Pair after = {};
};

// The pairs are in the order of the new machine.
OrderChange OrderOf(const std::vector<Pair>& pairs);

}  // namespace rux::diff

#endif  // DIFF_ORDER_H_
