#include "compiled/distinct_texts.h"

#include <algorithm>
#include <cstring>
#include <random>
#include <utility>

namespace rux::compiled {
namespace {

constexpr std::uint64_t kPrime = (std::uint64_t{1} << 61) - 1;

std::uint64_t MultiplyModuloPrime(std::uint64_t a, std::uint64_t b) {
  __extension__ using Product = unsigned __int128;
  const Product product = static_cast<Product>(a) * b;
  const std::uint64_t sum =
      static_cast<std::uint64_t>(product & kPrime) + static_cast<std::uint64_t>(product >> 61);
  return sum >= kPrime ? sum - kPrime : sum;
}

// The text as a polynomial, at a place that nobody can know before.
std::uint32_t HashOf(std::string_view text) {
  static const std::uint64_t place = [] {
    std::random_device device;
    return (std::uint64_t{device()} << 28 ^ device()) % (kPrime - 2) + 2;
  }();
  constexpr std::size_t kStep = 7;  // bytes, so that each is below the prime
  std::uint64_t hash = text.size() + 1;
  while (!text.empty()) {
    const std::size_t size = std::min(kStep, text.size());
    std::uint64_t coefficient = 0;
    std::memcpy(&coefficient, text.data(), size);
    hash = MultiplyModuloPrime(hash, place) + coefficient;
    if (hash >= kPrime) hash -= kPrime;
    text.remove_prefix(size);
  }
  return static_cast<std::uint32_t>(MultiplyModuloPrime(hash, place));
}

}  // namespace

void DistinctTexts::Restart(std::size_t expected) {
  texts_.clear();
  texts_.reserve(expected);
  first_ = 0;
  std::size_t slots = 64;
  while (slots < 2 * expected) slots *= 2;
  slots_.assign(slots, Slot());
}

bool DistinctTexts::Insert(std::string_view text) {
  if (slots_.size() < 2 * (texts_.size() - first_ + 1)) Resize(2 * slots_.size());
  const std::uint32_t hash = HashOf(text);
  Slot& slot = SlotOf(hash, text);
  if (slot.text > first_) return false;
  texts_.push_back(text);
  slot = {hash, static_cast<std::uint32_t>(texts_.size())};
  return true;
}

void DistinctTexts::Resize(std::size_t slots) {
  const std::vector<Slot> old = std::exchange(slots_, std::vector<Slot>(slots));
  for (const Slot& slot : old) {
    if (slot.text > first_) SlotOf(slot.hash, texts_[slot.text - 1]) = slot;
  }
}

// That of the text, or a free one for it.
DistinctTexts::Slot& DistinctTexts::SlotOf(std::uint32_t hash, std::string_view text) {
  const std::size_t last = slots_.size() - 1;  // their number is a power of two
  for (std::size_t at = hash & last;; at = (at + 1) & last) {
    Slot& slot = slots_[at];
    if (slot.text <= first_ || (slot.hash == hash && texts_[slot.text - 1] == text)) return slot;
  }
}

}  // namespace rux::compiled
