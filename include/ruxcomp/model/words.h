// The words of sections and entries where they are; see model.h.
#ifndef RUXCOMP_MODEL_WORDS_H_
#define RUXCOMP_MODEL_WORDS_H_

#include <cstddef>
#include <cstdint>

#include "ruxcomp/language/words.h"

namespace ruxcomp::detail {

// A number as it is in a meta file, the least significant byte first, at any address.
struct Word {
  unsigned char bytes[language::kWordSize];

  std::uint32_t Load() const noexcept { return language::LoadWord(bytes); }
};
static_assert(sizeof(Word) == language::kWordSize && alignof(Word) == 1);

// What sections and entries begin with: an identifier, and the count of the entries or values that
// follow.
inline constexpr std::size_t kHeadWords = 2;
inline std::uint32_t IdentifierOf(const Word* record) noexcept { return record[0].Load(); }
inline std::uint32_t CountOf(const Word* record) noexcept { return record[1].Load(); }

// What follows an entry. Most entries have one value: the processor guesses that and goes on
// without waiting for the count.
inline const Word* EntryAfter(const Word* entry) noexcept {
  const std::uint32_t count = CountOf(entry);
  if (__builtin_expect(static_cast<long>(count == 1), 1L) != 0) return entry + kHeadWords + 1;
  return entry + kHeadWords + count;
}

// The first entry of a section for which test(entry, ordinal) is true; null when there is none.
template <class Test>
const Word* FirstEntry(const Word* section, Test test) {
  const std::uint32_t count = CountOf(section);
  const Word* entry = section + kHeadWords;
  for (std::uint32_t i = 0; i < count; ++i, entry = EntryAfter(entry)) {
    if (test(entry, i)) return entry;
  }
  return nullptr;
}

}  // namespace ruxcomp::detail

#endif  // RUXCOMP_MODEL_WORDS_H_
