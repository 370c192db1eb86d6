// Numbers and texts for random scripts, the odd ones preferred.
#ifndef TESTS_GENERATORS_RANDOM_TEXTS_H_
#define TESTS_GENERATORS_RANDOM_TEXTS_H_

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

// One source of randomness: the same seed gives the same everywhere.
class Random {
 public:
  explicit Random(std::uint32_t seed) : engine_(seed) {}

  // 0 to bound - 1.
  std::uint32_t Below(std::size_t bound) {
    return static_cast<std::uint32_t>(engine_() % static_cast<std::uint32_t>(bound));
  }
  std::uint32_t Between(std::uint32_t least, std::uint32_t most) {
    return least + Below(most - least + 1);
  }
  bool Chance(std::uint32_t percent) { return Below(100) < percent; }
  std::uint32_t Word() { return static_cast<std::uint32_t>(engine_()); }

  template <class T>
  const T& Pick(const std::vector<T>& from) {
    return from[Below(from.size())];
  }
  template <class T>
  void Shuffle(std::vector<T>& items) {
    for (std::size_t i = items.size(); i > 1; --i) std::swap(items[i - 1], items[Below(i)]);
  }

 private:
  std::mt19937 engine_;
};

// Any text that a part of a value can be: not empty, no double quote, line feed or NUL.
std::string RandomText(Random& random);

// A key, begun with that: any text that ends before an '=' and has only pairs of double quotes.
std::string RandomKey(Random& random, const std::string& beginning);

// A key without double quotes: a name that values can mention.
std::string RandomName(Random& random, const std::string& beginning);

// One of the ways to write a number, of at most 10 characters. They begin with a digit.
std::string RandomNumber(Random& random, std::uint32_t number);

// A number written in a way that few would think of.
std::string RandomOddNumber(Random& random);

#endif  // TESTS_GENERATORS_RANDOM_TEXTS_H_
