#include "ruxcomp/model/hash_index.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

using ruxcomp::detail::HashIndex;
using ruxcomp::detail::kNoItem;
using ruxcomp::detail::SeededHash;
using ruxcomp::detail::TextKey;

namespace {

TEST(SeededHashTest, SeesEveryByteAndTheSize) {
  const SeededHash hash(1);
  std::set<std::size_t> hashes;
  for (std::size_t size = 0; size <= 24; ++size) {
    const std::string zeros(size, '\0');
    EXPECT_TRUE(hashes.insert(hash(zeros)).second) << size;
    for (std::size_t at = 0; at < size; ++at) {
      for (const char changed : {'\x01', '\x80'}) {
        std::string text = zeros;
        text[at] = changed;
        EXPECT_TRUE(hashes.insert(hash(text)).second) << size << ' ' << at;
      }
    }
  }
}

TEST(SeededHashTest, DependsOnTheSeed) {
  EXPECT_EQ(SeededHash(1)("name"), SeededHash(1)("name"));
  EXPECT_NE(SeededHash(1)("name"), SeededHash(2)("name"));
  EXPECT_EQ(SeededHash()("name"), SeededHash()("name"));  // that of the process
}

TEST(SeededHashTest, SpreadsNamesThatDifferInFewBits) {
  std::unordered_set<std::uint32_t> hashes;  // as HashIndex keeps them
  constexpr unsigned kWords = 12;
  for (unsigned choice = 0; choice < 1U << kWords; ++choice) {
    std::string name;
    for (unsigned word = 0; word < kWords; ++word) {
      name += (choice >> word & 1) != 0 ? "aaa\xE1zzz\xFA" : "aaaazzzz";
    }
    hashes.insert(static_cast<std::uint32_t>(SeededHash(7)(name)));
  }
  EXPECT_GE(hashes.size(), (1U << kWords) - 8);
}

TEST(HashIndexTest, KeepsTheFirstItemOfAKeyInItsScope) {
  HashIndex<TextKey> index;
  EXPECT_TRUE(index.Add(1, "a", 5));
  EXPECT_FALSE(index.Add(1, "a", 6));
  EXPECT_TRUE(index.Add(2, "a", 7));
  EXPECT_EQ(index.Find(1, "a"), 5U);
  EXPECT_EQ(index.Find(2, "a"), 7U);
  EXPECT_EQ(index.Find(1, "b"), kNoItem);
}

TEST(HashIndexTest, IsEmptyOnceCleared) {
  std::vector<std::string> names;
  for (int i = 0; i < 1000; ++i) names.push_back(std::to_string(i));
  HashIndex<TextKey> index;
  for (const std::uint32_t count : {1000U, 0U, 3U, 500U}) {
    for (std::uint32_t i = 0; i < count; ++i) EXPECT_TRUE(index.Add(0, names[i], i));
    for (std::uint32_t i = 0; i < count; ++i) EXPECT_EQ(index.Find(0, names[i]), i);
    index.Clear();
    for (const std::string& name : names) EXPECT_EQ(index.Find(0, name), kNoItem);
  }
}

}  // namespace
