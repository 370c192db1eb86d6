// The hash tables of the read model; see model.h.
#ifndef RUXCOMP_MODEL_HASH_INDEX_H_
#define RUXCOMP_MODEL_HASH_INDEX_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

#include "ruxcomp/model/seeded_hash.h"

namespace ruxcomp::detail {

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
// a quarter of them is free. Stays where it is: its address is part of its seed, so that no two
// tables of a process agree on which names collide.
template <class Key>
class HashIndex {
 public:
  HashIndex() = default;
  HashIndex(const HashIndex&) = delete;
  HashIndex& operator=(const HashIndex&) = delete;

  // Makes room for as many items.
  void Reserve(std::size_t count) {
    const std::size_t size = SlotsFor(count);
    if (size > size_) Rehash(std::make_unique<Slot[]>(size), size);
  }
  // The same, false when there is no memory for them.
  bool TryReserve(std::size_t count) noexcept {
    const std::size_t size = SlotsFor(count);
    if (size <= size_) return true;
    std::unique_ptr<Slot[]> slots(new (std::nothrow) Slot[size]);
    if (slots == nullptr) return false;
    Rehash(std::move(slots), size);
    return true;
  }

  // Removes all items, in time linear in their number. The room for as many stays.
  void Clear() {
    const std::size_t size = SlotsFor(count_);
    if (size < size_) {
      slots_ = std::make_unique<Slot[]>(size_ = size);
    } else {
      std::fill_n(slots_.get(), size_, Slot());
    }
    count_ = 0;
  }

  // False when the scope has the key already. Takes memory when there is no room left.
  bool Add(std::uint32_t scope, typename Key::Of of, std::uint32_t item) {
    if (!HasRoom(count_ + 1, size_)) Reserve(count_ + 1);
    const Key key(of, seed_);
    Slot& slot = slots_[Position(scope, key)];
    if (slot.item != kNoItem) return false;
    slot = {key, scope, item};
    ++count_;
    return true;
  }

  // kNoItem when there is none.
  std::uint32_t Find(std::uint32_t scope, typename Key::Of of) const noexcept {
    return size_ == 0 ? kNoItem : slots_[Position(scope, Key(of, seed_))].item;
  }

 private:
  struct Slot {
    Key key;
    std::uint32_t scope = 0;
    std::uint32_t item = kNoItem;
  };

  // Where the key is, or the free slot where it would be.
  std::size_t Position(std::uint32_t scope, const Key& key) const noexcept {
    const std::size_t mask = size_ - 1;  // a power of two, less one
    const std::uint64_t hash = Mixed(seed_ ^ (key.Hash() | std::uint64_t{scope} << 32));
    std::size_t at = static_cast<std::size_t>(hash) & mask;
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

  void Rehash(std::unique_ptr<Slot[]> slots, std::size_t size) noexcept {
    slots_.swap(slots);
    std::swap(size_, size);
    for (const Slot* slot = slots.get(); size > 0; --size, ++slot) {
      if (slot->item != kNoItem) slots_[Position(slot->scope, slot->key)] = *slot;
    }
  }

  static constexpr std::size_t kLeastSlots = 16;

  const std::uint64_t seed_ = SeedOfProcess() ^ reinterpret_cast<std::uintptr_t>(this);
  std::unique_ptr<Slot[]> slots_;
  std::size_t size_ = 0;  // of the slots
  std::size_t count_ = 0;
};

}  // namespace ruxcomp::detail

#endif  // RUXCOMP_MODEL_HASH_INDEX_H_
