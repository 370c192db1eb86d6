// Texts that are handed on while they grow.
#include "support/text_stream.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

using rux::support::TextStream;
using rux::support::WrittenText;

TEST(TextStreamTest, HandsOnEverythingInOrder) {
  std::string expected;
  const std::string text = WrittenText([&](TextStream& out) {
    for (int i = 0; i < 100000; ++i) {
      const std::string line = "line " + std::to_string(i);
      expected += line + '\n';
      out += line;
      out += '\n';
    }
  });
  EXPECT_TRUE(text == expected);
}

TEST(TextStreamTest, KeepsNoMoreThanAPiece) {
  constexpr std::size_t kPiece = 65536;
  std::size_t written = 0;
  std::size_t handed_on = 0;
  TextStream out([&](std::string_view piece) { handed_on += piece.size(); });
  const std::string line(1000, 'x');
  for (int i = 0; i < 1000; ++i) {
    out += line;
    written += line.size();
    EXPECT_LT(written - handed_on, kPiece + line.size());
  }
  EXPECT_GT(handed_on, 0U);
  out.Flush();
  EXPECT_EQ(handed_on, written);
}

TEST(TextStreamTest, WritesNothingOfNothing) {
  EXPECT_EQ(WrittenText([](TextStream&) {}), "");
}
