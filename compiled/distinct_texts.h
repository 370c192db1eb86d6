// Finding texts that stand twice.
#ifndef COMPILED_DISTINCT_TEXTS_H_
#define COMPILED_DISTINCT_TEXTS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace rux::compiled {

// A set of texts that takes a constant time for each, whoever chose them: how they are spread
// depends on a number that differs from process to process.
class DistinctTexts {
 public:
  // Room for so many makes filling faster.
  explicit DistinctTexts(std::size_t expected = 0) { Restart(expected); }

  // Empties the set for so many others, in the memory that it has.
  void Restart(std::size_t expected);

  // False when the set has it already. The text must outlive the set.
  bool Insert(std::string_view text);

  // Empties it in a time that does not depend on how many there were.
  void Clear() { first_ = texts_.size(); }

 private:
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t text = 0;  // 1 + its ordinal; free when that is before the first
  };

  void Resize(std::size_t slots);
  Slot& SlotOf(std::uint32_t hash, std::string_view text);

  std::vector<std::string_view> texts_;
  std::size_t first_ = 0;  // of the texts since the last Clear()
  std::vector<Slot> slots_;
};

}  // namespace rux::compiled

#endif  // COMPILED_DISTINCT_TEXTS_H_
