// How many there are of each message. A script may have millions: the first ones of each message
// are kept, the others only counted.
#ifndef FINDINGS_TALLY_H_
#define FINDINGS_TALLY_H_

#include <cstddef>
#include <unordered_map>

#include "findings/message_row.h"

namespace ruxcomp::findings {

// How many messages at most; 0 means all.
using Most = std::size_t;

constexpr bool IsWithin(std::size_t count, Most most) { return most == 0 || count <= most; }

class Tally {
 public:
  Tally() = default;
  explicit Tally(Most most) : most_(most) {}

  // Counts one more of a message. Answers whether to keep it.
  bool Add(const MessageRow& row) { return IsWithin(++counts_[&row], most_); }

  // Calls use(row, count) for each message of which `count` were not kept.
  template <class Use>
  void ForEachRest(Use use) const {
    for (const auto& [row, count] : counts_) {
      if (!IsWithin(count, most_)) use(*row, count - most_);
    }
  }

 private:
  Most most_ = 0;
  std::unordered_map<const MessageRow*, std::size_t> counts_;
};

}  // namespace ruxcomp::findings

#endif  // FINDINGS_TALLY_H_
