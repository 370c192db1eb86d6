// Memory that goes all at once: texts and objects side by side.
#include "frontend/arena.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

using namespace ruxcomp::core;

namespace {

TEST(ArenaTest, TextsAreCopiesThatEndInAZero) {
  Arena arena;
  std::string source = "one";
  const Text text = arena.Add(source);
  source = "two";
  EXPECT_EQ(text, "one");
  EXPECT_STREQ(text.c_str(), "one");
  EXPECT_EQ(text.size(), 3u);
}

TEST(ArenaTest, EmptyTextIsEmpty) {
  Arena arena;
  EXPECT_TRUE(arena.Add("").empty());
  EXPECT_STREQ(arena.Add("").c_str(), "");
}

TEST(ArenaTest, TextsKeepTheirZeros) {
  Arena arena;
  const std::string source("a\0b", 3);
  EXPECT_EQ(arena.Add(source), source);
}

TEST(ArenaTest, CutEndsAPartInItsPlace) {
  Arena arena;
  const Text whole = arena.Add("one,two");
  const Text part = Arena::Cut(whole.view().substr(0, 3));
  EXPECT_STREQ(part.c_str(), "one");
  EXPECT_EQ(part.c_str(), whole.c_str());
  EXPECT_EQ(whole.view().substr(4), "two");
  EXPECT_STREQ(Arena::Cut(whole.view().substr(4)).c_str(), "two");
  EXPECT_STREQ(Arena::Cut(whole.view().substr(4, 0)).c_str(), "");
}

// Of all sizes, so that blocks end everywhere, and some that are larger than a block.
TEST(ArenaTest, NothingOverlaps) {
  Arena arena;
  std::vector<Text> texts;
  std::vector<const std::uint64_t*> numbers;
  for (std::uint64_t i = 0; i < 3000; ++i) {
    const std::size_t size = i % 500 == 499 ? 200'000 : i % 97;
    texts.push_back(arena.Add(std::string(size, static_cast<char>('a' + i % 26))));
    numbers.push_back(&arena.Make<std::uint64_t>(i));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(numbers.back()) % alignof(std::uint64_t), 0u);
    std::uint64_t* const many = arena.MakeArray<std::uint64_t>(i % 7);
    for (std::uint64_t k = 0; k < i % 7; ++k) many[k] = k;
  }
  for (std::uint64_t i = 0; i < texts.size(); ++i) {
    const std::size_t size = i % 500 == 499 ? 200'000 : i % 97;
    ASSERT_EQ(texts[i], std::string(size, static_cast<char>('a' + i % 26))) << i;
    ASSERT_EQ(texts[i].c_str()[size], '\0') << i;
    ASSERT_EQ(*numbers[i], i);
  }
}

TEST(ArenaTest, CanBeFilledAgainAfterClear) {
  Arena arena;
  arena.Add("one");
  arena.Clear();
  EXPECT_EQ(arena.Add("two"), "two");
  EXPECT_EQ(arena.Make<int>(3), 3);
}

}  // namespace
