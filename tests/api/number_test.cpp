// Which texts are numbers, which numbers they are, and when a defined word comes first.
#include <utility>

#include "tests/api/sample_script.h"

namespace {

using NumberTest = CheckTest;

// Two devices with one ID: they clash when the texts of their IDs mean the same number.
TEST_F(NumberTest, TextsStandForNumbers) {
  const std::pair<const char*, std::string> rows[] = {
      {"7", "7"},
      {"0", "0"},
      {"00", "0"},
      {"0000000000", "0"},
      {"010", "10"},
      {"0x0", "0"},
      {"0X0", "0"},
      {"0x00000000", "0"},
      {"0x10", "16"},
      {"0X1f", "31"},
      {"0xFFFFFFFF", "4294967295"},
      {"4294967295", "4294967295"},
      // Cut to 32 bits.
      {"4294967297", "1"},
      {"9999999999", "1410065407"},
      // What follows the digits does not count.
      {"12abc", "12"},
      {"0abc", "0"},
      {"0x1G", "1"},
      {"0x0g", "0"},
      {"1.9", "1"},
      {"1 2", "1"},
      {"\"5 \"", "5"},
      // A sign and blanks before the digits do not hurt.
      {"-1", "4294967295"},
      {"-2", "4294967294"},
      {"+5", "5"},
      {"\" 5\"", "5"},
      {"\"\t5\"", "5"},
      {"\" -1\"", "4294967295"},
  };
  for (const auto& [text, number] : rows) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Rejected({Device().With("ID", text), Device().With("NAME", "b").With("ID", number)}),
              (Lines{"Error[board.rux:8]: [DEVICE], ID " + number +
                     " is redefined.It has been defined in Line[board.rux:3].\n"}));
  }
}

// Only a converted text that is all zero is looked at more closely, not one that is zero once cut.
TEST_F(NumberTest, FourGigaIsValidAndCutToZero) {
  EXPECT_EQ(Accepted({PelmGroup().With("PID", "4294967296").With("SENSORS", "")}), Lines{});
}

TEST_F(NumberTest, OtherTextsAreNone) {
  const std::string rows[] = {"abc", "x10", "-", "+", ".5", "-abc",
                              // A zero must be the first character, or the first after the prefix.
                              "-0", "+0", "-0x10", "0xg", "0x-5", " 0", " 0x10",
                              // Longer than ten characters, whatever they are.
                              "00000000000", "10000000000", "0x123456789", "1234567890a",
                              "-4294967295"};
  for (const std::string& text : rows) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Rejected({Device().With("ID", '"' + text + '"')}),
              (Lines{"Error[board.rux:3]: [DEVICE]:ID, " + text +
                     " has not been defined and is not a valid number.\n"}));
  }
}

TEST_F(NumberTest, HexadecimalPrefixWithoutADigitRaises) {
  for (const char* text : {"0x", "0X"}) {
    SCOPED_TRACE(text);
    ExpectRaise({Device().With("ID", text)});
    ExpectRaise({Section("GLOBAL").With("G_X", std::string("T1, ") + text), Types()});
  }
}

TEST_F(NumberTest, EmptyOperandRaises) {
  ExpectRaise({Section("GLOBAL").With("G_X", "T1, \"\""), Types()});
}

TEST_F(NumberTest, DefinitionWithoutADigitRaisesWhileTheScriptIsRead) {
  for (const char* value : {"0x", "0X", "\"\""}) {
    SCOPED_TRACE(value);
    Write("board.rux", Section("DEFINE").With("A", value));
    ASSERT_EQ(gccCompStart(Path("board.rux")), 1u);
    EXPECT_THROW(gccParse(), std::out_of_range);
    gccCompEnd();
  }
}

TEST_F(NumberTest, WordStandsForItsNumber) {
  const Section words = Section("DEFINE").With("W", "0x10");
  EXPECT_EQ(Accepted({words, System().With("FLAG", "W")}), Lines{});
  EXPECT_EQ(Accepted({words, PelmGroup().With("ID", "16").With("PID", "W").With("SENSORS", "")}),
            Lines{});
  EXPECT_EQ(Rejected({System().With("FLAG", "w"), words}),
            (Lines{"Error[board.rux:4]: [SYSTEM]:FLAG, w has not been defined and is not a valid "
                   "number.\n"}));
}

// A word may look like a number when it begins with a sign.
TEST_F(NumberTest, DefinitionTakesTheWordBeforeTheNumber) {
  const Section words = Section("DEFINE").With("+5", "100").With("W", "+5");
  const Section pelm_group = PelmGroup().With("PID", "W").With("SENSORS", "");
  EXPECT_EQ(Accepted({words, pelm_group.With("ID", "100")}), Lines{});
  EXPECT_EQ(Rejected({words, pelm_group.With("ID", "5")}),
            (Lines{"Error[board.rux:7]: [PELMGROUP]:PID, Parent PELMGROUP with ID W does not "
                   "exist.\n"}));
}

TEST_F(NumberTest, ReferenceTakesTheNumberBeforeTheWord) {
  const Section words = Section("DEFINE").With("+5", "100");
  const Section pelm_group = PelmGroup().With("PID", "+5").With("SENSORS", "");
  EXPECT_EQ(Accepted({words, pelm_group.With("ID", "5")}), Lines{});
  EXPECT_EQ(Rejected({words, pelm_group.With("ID", "100")}),
            (Lines{"Error[board.rux:6]: [PELMGROUP]:PID, Parent PELMGROUP with ID +5 does not "
                   "exist.\n"}));
}

}  // namespace
