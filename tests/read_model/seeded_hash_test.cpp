// The hash that everything takes, and tables by it: steps are counted, not time.
#include "ruxcomp/model/seeded_hash.h"

#include <gtest/gtest.h>

#include <set>
#include <string_view>
#include <unordered_set>

#include "tests/support/colliding.h"

using ruxcomp::detail::HashSet;
using ruxcomp::detail::SeededHash;

namespace {

// How many keys are looked at to find each key of a table once.
template <class Table>
std::size_t Steps(const Table& table) {
  std::size_t steps = 0;
  for (std::size_t bucket = 0; bucket < table.bucket_count(); ++bucket) {
    const std::size_t size = table.bucket_size(bucket);
    steps += size * (size + 1) / 2;
  }
  return steps;
}

template <class Table, class Keys>
std::size_t StepsFor(const Keys& keys) {
  Table table;
  table.reserve(keys.size());
  for (const auto& key : keys) table.insert(key);
  EXPECT_EQ(table.size(), keys.size());
  return Steps(table);
}

constexpr std::size_t kMany = 4096;

TEST(SeededHashTest, TextsThatCollideElsewhereTakeNoMoreSteps) {
  const std::vector<std::string> texts = CollidingTexts(kMany);
  if (texts.empty()) GTEST_SKIP() << "std::hash is another one here";
  using Plain = std::unordered_set<std::string_view>;
  ASSERT_EQ(StepsFor<Plain>(texts), kMany * (kMany + 1) / 2);
  const std::size_t control = StepsFor<HashSet<std::string_view>>(DifferentTexts(kMany));
  EXPECT_LT(StepsFor<HashSet<std::string_view>>(texts), 2 * control);
  EXPECT_LT(control, 2 * kMany);
}

TEST(SeededHashTest, NumbersThatCollideElsewhereTakeNoMoreSteps) {
  const std::vector<std::uint32_t> numbers = CollidingNumbers(kMany);
  using Plain = std::unordered_set<std::uint32_t>;
  ASSERT_EQ(StepsFor<Plain>(numbers), kMany * (kMany + 1) / 2);
  std::vector<std::uint32_t> others;
  for (std::uint32_t i = 0; i < kMany; ++i) others.push_back(i);
  const std::size_t control = StepsFor<HashSet<std::uint32_t>>(others);
  EXPECT_LT(StepsFor<HashSet<std::uint32_t>>(numbers), 2 * control);
  EXPECT_LT(control, 2 * kMany);
}

TEST(SeededHashTest, SeesEveryBitOfANumber) {
  const SeededHash hash(1);
  std::set<std::size_t> hashes = {hash(std::uint32_t{0})};
  for (unsigned bit = 0; bit < 32; ++bit) {
    EXPECT_TRUE(hashes.insert(hash(std::uint32_t{1} << bit)).second) << bit;
  }
  EXPECT_NE(SeededHash(1)(7u), SeededHash(2)(7u));
  EXPECT_EQ(SeededHash()(7u), SeededHash()(7u));
}

}  // namespace
