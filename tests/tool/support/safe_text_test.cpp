#include "support/safe_text.h"

#include <gtest/gtest.h>

#include <string>

using rux::support::CanBeTyped;
using rux::support::Columns;
using rux::support::Hex;
using rux::support::NameInPath;
using rux::support::NameText;
using rux::support::SafeFormat;
using rux::support::SafeLine;
using rux::support::SafePath;
using rux::support::SafeText;
using rux::support::Shortened;

namespace {

TEST(SafeTextTest, ShowsWhatCannotBeSeenByItsBytes) {
  EXPECT_EQ(SafeText("a\x1B\t\x7F"), "a\\x1B\\x09\\x7F");
  EXPECT_EQ(SafeLine("a\x1B\t"), "a\\x1B\t");
  EXPECT_EQ(SafeText("\xC2\x9B"), "\\xC2\\x9B");  // U+009B
  EXPECT_EQ(SafeText("\xE2\x80\xAE\xE2\x81\xA6"), "\\xE2\\x80\\xAE\\xE2\\x81\\xA6");
  EXPECT_EQ(SafeText("\xE2\x80\x8B\xEF\xBB\xBF"), "\\xE2\\x80\\x8B\\xEF\\xBB\\xBF");
  EXPECT_EQ(SafeText("\xE9\xC0\xAF"), "\\xE9\\xC0\\xAF");
  EXPECT_EQ(SafeText("\xE2\x80\xA8\xD8\x9C"), "\\xE2\\x80\\xA8\\xD8\\x9C");    // U+2028, U+061C
  EXPECT_EQ(SafeText("\xF3\xA0\x80\xA1"), "\\xF3\\xA0\\x80\\xA1");             // U+E0021
  EXPECT_EQ(SafeText("\xE3\x85\xA4"), "\\xE3\\x85\\xA4");                      // U+3164
  EXPECT_EQ(SafeText("1\xC2\xA0\xE2\x80\xAF"), "1\\xC2\\xA0\\xE2\\x80\\xAF");  // U+00A0, U+202F
  EXPECT_EQ(SafeText("\xEF\xBF\xBF\xEF\xB7\x90"),
            "\\xEF\\xBF\\xBF\\xEF\\xB7\\x90");  // U+FFFF, U+FDD0
  EXPECT_EQ(SafeText("\xE2\x80\x90 \xE3\x80\x80\xCC\x81"), "\xE2\x80\x90 \xE3\x80\x80\xCC\x81");
}

TEST(SafeTextTest, LeavesWhatIsSafe) {
  const std::string shown = SafeText("a\\\x1B\xFF\xE2\x80\xAE\n");
  EXPECT_EQ(SafeText(shown), shown);
}

TEST(SafeTextTest, FormatsValuesMadeSafe) {
  EXPECT_EQ(SafeFormat("{}\n{} {}\n", std::string("a\n::b"), 7U, "\x1B"), "a\\x0A::b\n7 \\x1B\n");
}

TEST(SafeTextTest, KeepsPathsFromBeingCommands) {
  EXPECT_EQ(SafePath("board.rux"), "board.rux");
  EXPECT_EQ(SafePath("a:b"), "a:b");
  EXPECT_EQ(SafePath("::error::x\x1B"), "./::error::x\\x1B");
  EXPECT_EQ(SafePath(" ::error::x"), "./ ::error::x");
  EXPECT_EQ(SafePath("/::x"), "/::x");
  EXPECT_EQ(SafePath("../::x"), "../::x");
  EXPECT_EQ(SafePath(""), "");
}

TEST(SafeTextTest, CountsColumnsOfTheShownText) {
  EXPECT_EQ(Columns("abc"), 3U);
  EXPECT_EQ(Columns("\xE6\xB8\xA9x"), 3U);
  EXPECT_EQ(Columns("e\xCC\x81"), 1U);
  EXPECT_EQ(Columns("\x1B"), 4U);
  EXPECT_EQ(Columns("\xE2\x80\xAE"), 12U);
  EXPECT_EQ(Columns("\xFF"), 4U);
}

TEST(SafeTextTest, CutsLongTextsAtWholeCharacters) {
  EXPECT_EQ(Shortened(std::string(200, 'a')), std::string(200, 'a'));
  EXPECT_EQ(Shortened(std::string(201, 'a')), std::string(200, 'a') + "...");
  EXPECT_EQ(Shortened(std::string(199, 'a') + "\xC3\xA4"), std::string(199, 'a') + "...");
}

TEST(SafeTextTest, QuotesNamesThatPathsCannotHoldOtherwise) {
  EXPECT_EQ(NameText("FAN_0"), "FAN_0");
  EXPECT_EQ(NameText(""), "\"\"");
  EXPECT_EQ(NameText("a/b"), "\"a/b\"");
  EXPECT_EQ(NameText("#1"), "\"#1\"");
  EXPECT_EQ(NameText("a\"b"), "\"a\"\"b\"");
  EXPECT_EQ(NameText("a\xE2\x80\xAE"), "\"a\\xE2\\x80\\xAE\"");
}

TEST(SafeTextTest, OffersShellsWhatTheyCanType) {
  EXPECT_TRUE(CanBeTyped("caf\xE9"));
  EXPECT_TRUE(CanBeTyped("\xE6\xB8\xA9"));
  EXPECT_FALSE(CanBeTyped("a\tb"));
  EXPECT_FALSE(CanBeTyped("a\x9B"));
  EXPECT_FALSE(CanBeTyped("a\xE2\x80\xAE"));
  EXPECT_EQ(NameInPath("caf\xE9"), "caf\xE9");
  EXPECT_EQ(NameInPath("caf\xE9 1"), "\"caf\xE9 1\"");
}

TEST(SafeTextTest, WritesBytesInHex) {
  EXPECT_EQ(Hex(std::string("\0\xAF", 2)), "00AF");
  EXPECT_EQ(Hex("\x0A\xFF", " "), " 0A FF");
}

}  // namespace
