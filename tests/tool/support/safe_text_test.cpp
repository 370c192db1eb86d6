#include "support/safe_text.h"

#include <gtest/gtest.h>

#include <string>

using rux::support::CanBeTyped;
using rux::support::Columns;
using rux::support::Hex;
using rux::support::NameInPath;
using rux::support::NameText;
using rux::support::SafeLine;
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
  EXPECT_EQ(SafeText("\xE2\x80\x90\xE2\x81\xA5\xC2\xA0"), "\xE2\x80\x90\xE2\x81\xA5\xC2\xA0");
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
