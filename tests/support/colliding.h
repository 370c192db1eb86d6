// Texts and numbers that collide in tables with the hash of the standard library.
#ifndef TESTS_SUPPORT_COLLIDING_H_
#define TESTS_SUPPORT_COLLIDING_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// As many different texts of sixteen characters with one std::hash. They can be names in scripts.
// None where that hash is not the one of libstdc++ for 64 bits.
std::vector<std::string> CollidingTexts(std::size_t count);

// As many other texts of that size, whose hashes differ.
std::vector<std::string> DifferentTexts(std::size_t count);

// As many multiples of the number of buckets that a table takes for them.
std::vector<std::uint32_t> CollidingNumbers(std::size_t count);

#endif  // TESTS_SUPPORT_COLLIDING_H_
