// The hash of texts and numbers from files of unknown origin, and tables by it.
#ifndef RUXCOMP_MODEL_SEEDED_HASH_H_
#define RUXCOMP_MODEL_SEEDED_HASH_H_

#include <sys/auxv.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace ruxcomp::detail {

// Spreads the bits of a word all over it, so that keys that follow each other do not collide.
constexpr std::uint64_t Mixed(std::uint64_t word) noexcept {
  word = (word ^ word >> 32) * 0x9E3779B97F4A7C15;
  word = (word ^ word >> 29) * 0xBF58476D1CE4E5B9;
  return word ^ word >> 32;
}

template <class Word>
Word LoadAs(const char* from) noexcept {
  Word word;
  std::memcpy(&word, from, sizeof word);
  return word;
}

// A number that differs from process to process. No source is random enough alone: the random bytes
// that the kernel gives to every process may be missing, a clock can be guessed, and of an address
// few bits are unknown where addresses are short.
inline std::uint64_t SeedOfProcess() noexcept {
  static const std::uint64_t seed = [] {
    std::uint64_t sources[5] = {};
    // The kernel hands addresses over as numbers.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    if (const auto* random = reinterpret_cast<const char*>(getauxval(AT_RANDOM))) {
      std::memcpy(sources, random, 2 * sizeof *sources);
    }
    sources[2] =
        static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    sources[3] = reinterpret_cast<std::uintptr_t>(&sources);        // the stack
    sources[4] = reinterpret_cast<std::uintptr_t>(&SeedOfProcess);  // the code
    std::uint64_t mixed = 0;
    for (const std::uint64_t source : sources) mixed = Mixed(mixed ^ source);
    return mixed;
  }();
  return seed;
}

// Hashes texts in time linear in their size, and numbers. Which of them collide depends on the
// seed, so that no file can be made whose names or IDs all do. A hash made without a seed
// takes that of the process.
class SeededHash {
 public:
  SeededHash() noexcept : seed_(SeedOfProcess()) {}
  explicit constexpr SeededHash(std::uint64_t seed) noexcept : seed_(seed) {}

  // By words of eight bytes, the last of which may overlap the one before it. Each is taken in
  // before all is mixed, so that under few seeds only the differences of two texts cancel each
  // other out. Not noexcept: tables of the standard library then keep the hash of each text.
  std::size_t operator()(std::string_view text) const {
    const char* at = text.data();
    const std::size_t size = text.size();
    std::uint64_t hash = Mixed(seed_ ^ size);
    if (size >= 8) {
      for (const char* last = at + size - 8; at < last; at += 8) {
        hash = Mixed(hash ^ LoadAs<std::uint64_t>(at));
      }
      hash ^= LoadAs<std::uint64_t>(text.data() + size - 8);
    } else if (size >= 4) {
      hash ^= std::uint64_t{LoadAs<std::uint32_t>(at)} << 32;
      hash ^= LoadAs<std::uint32_t>(at + size - 4);
    } else if (size > 0) {
      hash ^= std::uint64_t{LoadAs<std::uint8_t>(at)} << 24;
      hash ^= std::uint64_t{LoadAs<std::uint8_t>(at + size / 2)} << 16;
      hash ^= std::uint64_t{LoadAs<std::uint8_t>(at + size - 1)} << 8;
    }
    return static_cast<std::size_t>(Mixed(hash));
  }

  std::size_t operator()(std::uint32_t number) const noexcept {
    return static_cast<std::size_t>(Mixed(seed_ ^ number));
  }

 private:
  std::uint64_t seed_;
};

// Tables by texts or numbers: constant time each on average, whoever chose them. What is in one has
// no order that means anything.
template <class Key, class Value>
using HashMap = std::unordered_map<Key, Value, SeededHash>;
template <class Key>
using HashSet = std::unordered_set<Key, SeededHash>;

}  // namespace ruxcomp::detail

#endif  // RUXCOMP_MODEL_SEEDED_HASH_H_
