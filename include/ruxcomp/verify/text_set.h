// Finding texts that occur twice.
#ifndef RUXCOMP_VERIFY_TEXT_SET_H_
#define RUXCOMP_VERIFY_TEXT_SET_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ruxcomp/model/hash_index.h"

namespace ruxcomp::verify {

// A set of texts that outlive it. Each takes constant time on average, whoever chose them.
class TextSet {
 public:
  // Makes room for as many texts in all.
  void Reserve(std::size_t count) { texts_.Reserve(count); }

  // False when the set has it already.
  bool Insert(std::string_view text) { return texts_.Add(kScope, text, 0); }

  // Removes all texts, in time linear in their number.
  void Clear() { texts_.Clear(); }

 private:
  static constexpr std::uint32_t kScope = 0;  // the only one

  detail::HashIndex<detail::TextKey> texts_;
};

}  // namespace ruxcomp::verify

#endif  // RUXCOMP_VERIFY_TEXT_SET_H_
