// What formatting changes, and what it leaves.
#include "format/format.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// The formatted text; of what is refused, the line and the reason.
std::string Formatted(const std::string& text, bool blank_lines = false) {
  const rux::format::Formatted formatted = rux::format::Format(text, {blank_lines});
  if (formatted.refusal) {
    EXPECT_EQ(formatted.text, text);
    return std::to_string(formatted.refusal->line) + ": " + formatted.refusal->reason;
  }
  EXPECT_EQ(rux::format::Format(formatted.text, {blank_lines}).text, formatted.text);
  return formatted.text;
}

void ExpectUntouched(const std::string& text) { EXPECT_EQ(Formatted(text), text); }

TEST(FormatTest, WritesHeadersAndItemsInOneWay) {
  EXPECT_EQ(Formatted("  [ SENSOR ]\t\n\tNAME=CPU  0  \n  THRESHOLD_FH   =   85\n FLAG \n"),
            "[SENSOR]\nNAME         = CPU  0\nTHRESHOLD_FH = 85\nFLAG\n");
  EXPECT_EQ(Formatted("[SEN SOR]\nA=\n"), "[SENSOR]\nA =\n");
  EXPECT_EQ(Formatted("[A]\nMY KEY=x = y\n"), "[A]\nMY KEY = x = y\n");
}

TEST(FormatTest, WritesListsInOneWay) {
  EXPECT_EQ(Formatted("[A]\nS=1,2 ,  3\t,4\n"), "[A]\nS = 1, 2, 3, 4\n");
  EXPECT_EQ(Formatted("[A]\nS=a,,b ,\n"), "[A]\nS = a,, b,\n");
  EXPECT_EQ(Formatted("[A]\nS=,a\n"), "[A]\nS = , a\n");
  EXPECT_EQ(Formatted("[A]\nS=\"a , b\",\"\"\n"), "[A]\nS = \"a , b\", \"\"\n");
  EXPECT_EQ(Formatted("[A]\nS=\" a\" , b\n"), "[A]\nS = \" a\", b\n");
}

TEST(FormatTest, AlignsRunsOfASection) {
  EXPECT_EQ(Formatted("[A]\nA=1\nLONG=2\n\nB = 3\n[B]\nLONGER=4\n# c\nC=5\n"),
            "[A]\nA    = 1\nLONG = 2\n\nB = 3\n[B]\nLONGER = 4\n# c\nC      = 5\n");
  EXPECT_EQ(Formatted("[A]\nGr\xC3\xB6\xC3\x9F"
                      "e=1\nLength=2\n"),
            "[A]\nGr\xC3\xB6\xC3\x9F"
            "e  = 1\nLength = 2\n");
}

TEST(FormatTest, AlignsContinuationsUnderTheFirstPart) {
  EXPECT_EQ(Formatted("[A]\nSENSORS=1,2,\\\n3 \\\r\n,4\n"),
            "[A]\nSENSORS = 1, 2, \\\n          3 \\\r\n          , 4\n");
  EXPECT_EQ(Formatted("[A]\nKEY =\\\n 1\nLONGER = 2\n"),
            "[A]\nKEY    = \\\n         1\nLONGER = 2\n");
}

TEST(FormatTest, KeepsLineEndsAndTheByteOrderMark) {
  EXPECT_EQ(Formatted("\xEF\xBB\xBF  [A] \r\nB=1\r\n \n\t\r\nC=2"),
            "\xEF\xBB\xBF[A]\r\nB = 1\r\n\n\r\nC = 2");
  ExpectUntouched("\xEF\xBB\xBF");
  ExpectUntouched("[A]\n\t");
  ExpectUntouched("");
}

TEST(FormatTest, WritesHexadecimalDigitsAsCapitals) {
  EXPECT_EQ(Formatted("[SENSOR]\nID = 0x1af\nNAME = 0x1af\nVALUE = VT, 0xfe20, 0XaB, \"0xa\"\n"),
            "[SENSOR]\nID    = 0x1AF\nNAME  = 0x1af\nVALUE = VT, 0xFE20, 0XAB, \"0xa\"\n");
  EXPECT_EQ(Formatted("[DEFINE]\nA = 0xc\nB = 0xcg\nC = 0x00000000c\n"),
            "[DEFINE]\nA = 0xC\nB = 0xcg\nC = 0x00000000c\n");
  EXPECT_EQ(Formatted("[TABLE]\n0x0a.0x0f = 0xab\nNAME = 0xab\n"),
            "[TABLE]\n0x0a.0x0f = 0xAB\nNAME      = 0xab\n");
  ExpectUntouched("[PROPERTY]\nA = 0xab\n[UNKNOWN]\nA = 0xab\n[SENSOR]\nP_A = 0xab\n");
  EXPECT_EQ(Formatted("[IFDEF]\nDEFINEWORD = 0xab\nDEFINEWORD = 0xab\n"),
            "[IFDEF]\nDEFINEWORD = 0xab\nDEFINEWORD = 0xAB\n");
}

TEST(FormatTest, KeepsCommentsInTheirColumns) {
  EXPECT_EQ(Formatted("  # a  \t\n[A]   ; b\nB=1 # c\nLONG  = 2     # d\n     \t# e\n"),
            "# a\n[A]   ; b\nB    = 1 # c\nLONG = 2      # d\n# e\n");
  // Those of one column move together, with the lines that continue them.
  EXPECT_EQ(Formatted("[A]     # a\nB=1     # b\n        # c\n        # d\nLONGER=2 # e\n"),
            "[A]        # a\nB      = 1 # b\n           # c\n           # d\nLONGER = 2 # e\n");
}

TEST(FormatTest, MeasuresTabsAndWideCharacters) {
  EXPECT_EQ(Formatted("[A]\nB = 1\t# a\nLNG = 22\t# b\n"),
            "[A]\nB   = 1 # a\nLNG = 22        # b\n");
  EXPECT_EQ(Formatted("[A]\nB = \xE6\xBC\xA2 # a\nC = 12 # b\n"),
            "[A]\nB = \xE6\xBC\xA2 # a\nC = 12 # b\n");
}

TEST(FormatTest, LeavesWhatReadsDifferentlyFromItsLooks) {
  const char* const lines[] = {
      "  A=10#rack\n",
      "  A#B=1\n",
      "  A= a \"quoted\" b\n",
      "  A=\"a\" \"b\"\n",
      "  A=\"a\"\"\"\n",
      "  \"A\"=1\n",
      "  A=C:\\x\\ \nB = 1\n",
      "  A=1 # c\\ \n",
      "  # c \\\n  d\n",
      "  A=0x\\\n12\n",
      "  A=1,\\\n\\\n2\n",
      "  A=1,\\\n\n",
      "  ; c\r\t\n",
      "  A\\\n=1\n",
      "  A=1, # c \\\n 2\n",
      "  A=\"a,\\\nb\"\n",
      " [A\\\nB]\n",
      "  A=1\v\n",
      "  \\\n  \n",
  };
  for (const char* line : lines) ExpectUntouched(std::string("[A]\n") + line + "[B]\n");
  ExpectUntouched("[A]\n  A=C:\\x\\");
  // Such a line does not count for the others.
  EXPECT_EQ(Formatted("[A]\nB=1\nLONGER=1#1\n"), "[A]\nB = 1\nLONGER=1#1\n");
}

TEST(FormatTest, LeavesCommentsBelowThoseOfUntouchedLines) {
  EXPECT_EQ(Formatted("[A]\nB=1 # a\nC#D # b\n    # c\n"), "[A]\nB = 1 # a\nC#D # b\n    # c\n");
}

TEST(FormatTest, IsSwitchedOffAndOn) {
  EXPECT_EQ(
      Formatted("[A]\nB=1\n # rux: format off\n C=2\n  # x\n\n[ B ]\n #rux: format on\n D=3\n"),
      "[A]\nB = 1\n # rux: format off\n C=2\n  # x\n\n[ B ]\n #rux: format on\nD = 3\n");
  EXPECT_EQ(Formatted("[A]\n B=1 # rux: format off  why\n C=2\n"),
            "[A]\n B=1 # rux: format off  why\nC = 2\n");
  EXPECT_EQ(Formatted("[A]\n # rux: format offset\n C=2 ; see rux: format off\n"),
            "[A]\n# rux: format offset\nC = 2 ; see rux: format off\n");
}

TEST(FormatTest, LeavesTextWithErrors) {
  EXPECT_EQ(Formatted("A=1\n[A]\n"), "1: text before the first section is ignored");
  EXPECT_EQ(Formatted("[A]\nB=1\n =2\n[B\n"), "3: expected a key before the =");
  EXPECT_EQ(Formatted("[A]\nB=\"1\n"), "2: the double quote is not closed");
  EXPECT_EQ(Formatted("[A\n"), "1: expected ] at the end of the section header");
  EXPECT_EQ(Formatted("[A] b\n"), "1: text after the section header is ignored");
  EXPECT_EQ(Formatted(std::string("[A]\nB=\0\n", 8)), "2: NUL bytes are ignored");
}

TEST(FormatTest, PutsEmptyLinesBetweenSections) {
  EXPECT_EQ(
      Formatted("\r\n\n# a\n[A]\nB=1\n\n\n\nC=1     # c\n        # d\n# e\n[B]\n[C]\n\n\n", true),
      "# a\n[A]\nB = 1\n\nC = 1   # c\n        # d\n\n# e\n[B]\n\n[C]\n");
  EXPECT_EQ(Formatted("[A]\r\nB=1\r\n[B]", true), "[A]\r\nB = 1\r\n\r\n[B]");
  EXPECT_EQ(Formatted("\xEF\xBB\xBF\n\n[A]\n", true), "\xEF\xBB\xBF[A]\n");
  EXPECT_EQ(Formatted("[A]\n\n\t", true), "[A]\n");
  EXPECT_EQ(Formatted("[A]\n# rux: format off\n\n\n[B]\n[C]\n", true),
            "[A]\n# rux: format off\n\n\n[B]\n[C]\n");
}

}  // namespace
