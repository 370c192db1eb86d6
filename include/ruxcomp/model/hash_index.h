// The hash tables of the read model; see model.h.
#ifndef RUXCOMP_MODEL_HASH_INDEX_H_
#define RUXCOMP_MODEL_HASH_INDEX_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

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

// Hashes texts that somebody else may have chosen, in time linear in their size. Which texts
// collide depends on the seed, so that nobody can choose texts for a file that all do. A hasher
// made without a seed takes that of the process: std::unordered_set and std::unordered_map with it
// take constant time a text on average.
class SeededHash {
 public:
  SeededHash() noexcept : seed_(SeedOfProcess()) {}
  explicit constexpr SeededHash(std::uint64_t seed) noexcept : seed_(seed) {}

  // By words of eight bytes, the last of which may overlap the one before it. Each is taken in
  // before all is mixed, so that under few seeds only the differences of two texts cancel each
  // other out.
  std::size_t operator()(std::string_view text) const noexcept {
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

 private:
  // From the time, and from where the system put the stack and the code of the process.
  static std::uint64_t SeedOfProcess() noexcept {
    static const std::uint64_t seed = [] {
      const auto time =
          static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
      return Mixed(Mixed(time) ^ reinterpret_cast<std::uintptr_t>(&time)) ^
             reinterpret_cast<std::uintptr_t>(&SeedOfProcess);
    }();
    return seed;
  }

  std::uint64_t seed_;
};

// Keys of a HashIndex, as slots hold them. What they are hashed to depends on a seed.

struct NumberKey {
  using Of = std::uint32_t;

  NumberKey() = default;
  NumberKey(std::uint32_t of, std::uint64_t) noexcept : number(of) {}
  std::uint32_t Hash() const noexcept { return number; }
  friend bool operator==(NumberKey a, NumberKey b) noexcept { return a.number == b.number; }

  std::uint32_t number = 0;
};

// Of a text that outlives the table.
class TextKey {
 public:
  using Of = std::string_view;

  TextKey() = default;
  TextKey(std::string_view text, std::uint64_t seed) noexcept
      : text_(text.data()),
        size_(static_cast<std::uint32_t>(text.size())),
        hash_(static_cast<std::uint32_t>(SeededHash(seed)(text))) {}

  std::uint32_t Hash() const noexcept { return hash_; }
  friend bool operator==(const TextKey& a, const TextKey& b) noexcept {
    return a.hash_ == b.hash_ && a.size_ == b.size_ && std::memcmp(a.text_, b.text_, a.size_) == 0;
  }

 private:
  const char* text_ = "";
  std::uint32_t size_ = 0;
  std::uint32_t hash_ = 0;
};

inline constexpr std::uint32_t kNoItem = 0xFFFFFFFF;

// The first item that was added under a key in a scope. Open addressing: a slot holds one item, and
// a quarter of them is free. Stays where it is: its address is the seed of its hashes, so that
// nobody can choose names for a file that all collide.
template <class Key>
class HashIndex {
 public:
  HashIndex() = default;
  HashIndex(const HashIndex&) = delete;
  HashIndex& operator=(const HashIndex&) = delete;

  // Makes room for as many items.
  void Reserve(std::size_t count) {
    const std::size_t size = SlotsFor(count);
    if (size > slots_.size()) Rehash(size);
  }

  // Removes all items, in time linear in their number. The room for as many stays.
  void Clear() {
    slots_.assign(SlotsFor(count_), Slot());
    count_ = 0;
  }

  // False when the scope has the key already.
  bool Add(std::uint32_t scope, typename Key::Of of, std::uint32_t item) {
    if (!HasRoom(count_ + 1, slots_.size())) Reserve(count_ + 1);
    const Key key(of, Seed());
    Slot& slot = slots_[Position(scope, key)];
    if (slot.item != kNoItem) return false;
    slot = {key, scope, item};
    ++count_;
    return true;
  }

  // kNoItem when there is none.
  std::uint32_t Find(std::uint32_t scope, typename Key::Of of) const noexcept {
    return slots_.empty() ? kNoItem : slots_[Position(scope, Key(of, Seed()))].item;
  }

 private:
  struct Slot {
    Key key;
    std::uint32_t scope = 0;
    std::uint32_t item = kNoItem;
  };

  std::uint64_t Seed() const noexcept { return reinterpret_cast<std::uintptr_t>(this); }

  // Where the key stands, or the free slot where it would.
  std::size_t Position(std::uint32_t scope, const Key& key) const noexcept {
    const std::size_t mask = slots_.size() - 1;  // a power of two, less one
    std::size_t at = Mixed(Seed() ^ (key.Hash() | std::uint64_t{scope} << 32)) & mask;
    while (slots_[at].item != kNoItem && !(slots_[at].scope == scope && slots_[at].key == key)) {
      at = (at + 1) & mask;
    }
    return at;
  }

  static constexpr bool HasRoom(std::size_t count, std::size_t slots) noexcept {
    return 4 * count <= 3 * slots;
  }

  static constexpr std::size_t SlotsFor(std::size_t count) noexcept {
    std::size_t slots = kLeastSlots;
    while (!HasRoom(count, slots)) slots *= 2;
    return slots;
  }

  void Rehash(std::size_t size) {
    std::vector<Slot> slots(size);
    slots_.swap(slots);
    for (const Slot& slot : slots) {
      if (slot.item != kNoItem) slots_[Position(slot.scope, slot.key)] = slot;
    }
  }

  static constexpr std::size_t kLeastSlots = 16;

  std::vector<Slot> slots_;
  std::size_t count_ = 0;
};

}  // namespace ruxcomp::detail

#endif  // RUXCOMP_MODEL_HASH_INDEX_H_
