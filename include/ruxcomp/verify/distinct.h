// Finding what occurs twice among numbered items.
#ifndef RUXCOMP_VERIFY_DISTINCT_H_
#define RUXCOMP_VERIFY_DISTINCT_H_

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ruxcomp::verify {

// A set of items by their hashes, which has their numbers only. Each takes constant time on
// average when the hashes are seeded.
class Distinct {
 public:
  // Of so many items at most. Half of the slots stay free.
  explicit Distinct(std::size_t count) {
    std::size_t size = 2;
    while (size < 2 * count) size *= 2;
    slots_.resize(size);
  }

  // False when there is an item for which is_same(other) is true: the set stays as it is then.
  template <class IsSame>
  bool Insert(std::size_t hash, std::uint32_t item, IsSame is_same) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = hash & mask;
    for (; slots_[at] != 0; at = (at + 1) & mask) {
      if (is_same(slots_[at] - 1)) return false;
    }
    slots_[at] = item + 1;
    return true;
  }

 private:
  std::vector<std::uint32_t> slots_;  // the item, from 1; free: 0
};

}  // namespace ruxcomp::verify

#endif  // RUXCOMP_VERIFY_DISTINCT_H_
