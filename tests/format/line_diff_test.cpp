// What a diff shows.
#include "format/line_diff.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using rux::format::UnifiedDiff;

constexpr char kNames[] = "--- a.rux\n+++ a.rux\n";

TEST(LineDiffTest, OfEqualTextsIsEmpty) {
  EXPECT_EQ(UnifiedDiff("a.rux", "", ""), "");
  EXPECT_EQ(UnifiedDiff("a.rux", "A\n", "A\n"), "");
}

TEST(LineDiffTest, ShowsChangedLinesInContext) {
  EXPECT_EQ(
      UnifiedDiff("a.rux", "1\n2\n3\n4\nA=1\n5\n6\n7\n8\n", "1\n2\n3\n4\nA = 1\n5\n6\n7\n8\n"),
      std::string(kNames) + "@@ -2,7 +2,7 @@\n 2\n 3\n 4\n-A=1\n+A = 1\n 5\n 6\n 7\n");
}

TEST(LineDiffTest, JoinsHunksWhoseContextsMeet) {
  EXPECT_EQ(
      UnifiedDiff("a.rux", "A=1\n1\n2\n3\n4\n5\n6\nB=1\n", "A = 1\n1\n2\n3\n4\n5\n6\nB = 1\n"),
      std::string(kNames) +
          "@@ -1,8 +1,8 @@\n-A=1\n+A = 1\n 1\n 2\n 3\n 4\n 5\n 6\n-B=1\n+B = 1\n");
  EXPECT_EQ(
      UnifiedDiff("a.rux", "A=1\n1\n2\n3\n4\n5\n6\n7\nB=1\n",
                  "A = 1\n1\n2\n3\n4\n5\n6\n7\nB = 1\n"),
      std::string(kNames) +
          "@@ -1,4 +1,4 @@\n-A=1\n+A = 1\n 1\n 2\n 3\n@@ -6,4 +6,4 @@\n 5\n 6\n 7\n-B=1\n+B = 1\n");
}

TEST(LineDiffTest, LeavesEmptyLinesWhereTheyAre) {
  EXPECT_EQ(UnifiedDiff("a.rux", "A\n# b\nC\n", "A\n\nC\n", rux::format::EmptyLines::kStay),
            std::string(kNames) + "@@ -1,3 +1,3 @@\n A\n-# b\n+\n C\n");
}

TEST(LineDiffTest, ShowsEmptyLinesThatComeAndGo) {
  EXPECT_EQ(UnifiedDiff("a.rux", "A\nB\n\n\nC\n", "A\n\nB\n\nC\n"),
            std::string(kNames) + "@@ -1,5 +1,5 @@\n A\n+\n B\n \n-\n C\n");
  EXPECT_EQ(UnifiedDiff("a.rux", "\n\n", ""), std::string(kNames) + "@@ -1,2 +0,0 @@\n-\n-\n");
  EXPECT_EQ(UnifiedDiff("a.rux", "A\n\n", "A\n"), std::string(kNames) + "@@ -1,2 +1 @@\n A\n-\n");
}

TEST(LineDiffTest, SaysWhereNoLineFeedIs) {
  EXPECT_EQ(UnifiedDiff("a.rux", "A=1", "A = 1"),
            std::string(kNames) +
                "@@ -1 +1 @@\n-A=1\n\\ No newline at end of file\n+A = 1\n"
                "\\ No newline at end of file\n");
}

}  // namespace
