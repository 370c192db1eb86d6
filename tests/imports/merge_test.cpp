#include "imports/merge.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace rux::imports {
namespace {

constexpr char kBase[] =
    "# heading\n"
    "\n"
    "[PELMGROUP]\n"
    "NAME    = A\n"
    "SENSORS = 1, 2, 3\n"
    "\n"
    "# list:1\n"
    "[SENSOR]\n"
    "NAME = S\n"
    "HIGH = 5\n"
    "LOW  = 1\n";

std::string With(const std::string& text, const std::string& before, const std::string& after) {
  std::string result = text;
  const std::size_t at = result.find(before);
  EXPECT_NE(at, std::string::npos) << before;
  return result.replace(at, before.size(), after);
}

// "7: HIGH = 6 | HIGH = 7"
std::string ConflictsOf(const Merged& merged) {
  std::string text;
  for (const Conflict& conflict : merged.conflicts)
    text +=
        std::to_string(conflict.line) + ": " + conflict.edited + " | " + conflict.written + '\n';
  return text;
}

void ExpectMerged(const std::string& edited, const std::string& written, const std::string& text,
                  const std::string& conflicts = "") {
  const Merged merged = Merge(kBase, edited, written);
  EXPECT_EQ(merged.text, text);
  EXPECT_EQ(ConflictsOf(merged), conflicts);
}

TEST(Merge, TakesOverWhatNobodyEdited) {
  const std::string written = With(kBase, "HIGH = 5", "HIGH = 6");
  ExpectMerged(kBase, written, written);
}

TEST(Merge, KeepsEdits) {
  const std::string edited = With(kBase, "LOW  = 1\n", "LOW = 2  # low\nMORE = 1\n");
  ExpectMerged(edited, kBase, edited);
}

TEST(Merge, MergesLinesNextToEachOther) {
  ExpectMerged(With(kBase, "LOW  = 1", "LOW = 2"), With(kBase, "HIGH = 5", "HIGH = 6"),
               With(With(kBase, "LOW  = 1", "LOW = 2"), "HIGH = 5", "HIGH = 6"));
}

TEST(Merge, ReportsWhatChangedOnBothSides) {
  const std::string edited = With(kBase, "HIGH = 5", "HIGH = 6");
  ExpectMerged(edited, With(kBase, "HIGH = 5", "HIGH = 7"), edited, "10: HIGH = 6 | HIGH = 7\n");
}

TEST(Merge, TheSameChangeIsNotAConflict) {
  const std::string both = With(kBase, "HIGH = 5", "HIGH = 6");
  ExpectMerged(both, both, both);
}

TEST(Merge, BlanksMakeNoDifference) {
  const std::string edited = With(kBase, "HIGH = 5", "HIGH =  5");
  ExpectMerged(edited, With(kBase, "HIGH = 5", "HIGH = 6"), With(kBase, "HIGH = 5", "HIGH = 6"));
}

TEST(Merge, WhatWasTakenOutStaysOut) {
  const std::string edited = With(kBase, "HIGH = 5\n", "");
  ExpectMerged(edited, kBase, edited);
  ExpectMerged(edited, With(kBase, "HIGH = 5", "HIGH = 6"), edited, "11:  | HIGH = 6\n");
}

TEST(Merge, WhatTheImportTakesOutGoesUnlessItWasEdited) {
  const std::string written = With(kBase, "HIGH = 5\n", "");
  ExpectMerged(kBase, written, written);
  const std::string edited = With(kBase, "HIGH = 5", "HIGH = 6");
  ExpectMerged(edited, written, edited, "10: HIGH = 6 | \n");
}

TEST(Merge, NumbersOfListsCountOneByOne) {
  ExpectMerged(With(kBase, "1, 2, 3", "1, 3, 8"), With(kBase, "1, 2, 3", "1, 2, 9"),
               With(kBase, "1, 2, 3", "1, 8, 9"));
}

TEST(Merge, AddsSectionsAfterThoseThatTheyFollow) {
  const std::string mine = std::string(kBase) + "\n[SENSOR]\nNAME = MINE\n";
  const std::string written =
      With(kBase, "# list:1\n", "# list:1\n[SENSOR]\nNAME = T\n\n# list:2\n");
  ExpectMerged(mine, written,
               With(mine, "# list:1\n", "# list:1\n[SENSOR]\nNAME = T\n\n# list:2\n"));
}

TEST(Merge, TakesOutSectionsThatNobodyEdited) {
  const std::string written(kBase, std::string(kBase).find("# list:1"));
  ExpectMerged(kBase, written, written);
  const std::string edited = With(kBase, "HIGH = 5", "HIGH = 6");
  ExpectMerged(edited, written, edited, "10: HIGH = 6 | \n");
}

// The limits of a sensor in a section, with lines of the same key in place of those.
std::string SensorWith(const std::string& lines) { return "[SENSOR]\nNAME = S\n" + lines; }

void ExpectLimits(const std::string& base, const std::string& edited, const std::string& written,
                  const std::string& text, const std::string& conflicts = "") {
  const Merged merged = Merge(SensorWith(base), SensorWith(edited), SensorWith(written));
  EXPECT_EQ(merged.text, SensorWith(text));
  EXPECT_EQ(ConflictsOf(merged), conflicts);
}

TEST(Merge, AnEditedLimitKeepsItsAmountInAnotherScale) {
  ExpectLimits("THRESHOLD_FH = 13\n", "THRESHOLD_FL = -2\nTHRESHOLD_FH = 13\n",
               "THRESHOLD_FH = 13200\nP_DIVISOR = 1000\n",
               "THRESHOLD_FL = -2000    # -2\nTHRESHOLD_FH = 13200\nP_DIVISOR = 1000\n");
  // To a coarser one as well: the finer one stays.
  ExpectLimits("THRESHOLD_FH = 13200\nP_DIVISOR = 1000\n",
               "THRESHOLD_FL = 11500\nTHRESHOLD_FH = 13200\nP_DIVISOR = 1000\n",
               "THRESHOLD_FH = 14\n",
               "THRESHOLD_FL = 11500\nTHRESHOLD_FH = 14000    # 14\nP_DIVISOR = 1000\n");
}

TEST(Merge, ScalesThatWereEditedCountAsWell) {
  ExpectLimits("THRESHOLD_FH = 13\n", "THRESHOLD_FH = 1300\nP_DIVISOR = 100\n",
               "THRESHOLD_FH = 13200\nP_DIVISOR = 1000\n",
               "THRESHOLD_FH = 13200\nP_DIVISOR = 1000\n");
}

TEST(Merge, LimitsWithoutACommonScaleStayAsTheyWereEdited) {
  const std::string written = "THRESHOLD_FH = 13200\nP_UNIT = mV\n";
  ExpectLimits("THRESHOLD_FH = 13\nP_UNIT = V\n", "THRESHOLD_FH = 14\nP_UNIT = V\n", written,
               "THRESHOLD_FH = 14\nP_UNIT = V\n",
               "3: THRESHOLD_FH = 14 | THRESHOLD_FH = 13200\n4: P_UNIT = V | P_UNIT = mV\n");
  // 4294967 in thousandths takes more than 32 bits with a sign.
  ExpectLimits("THRESHOLD_FH = 13\n", "THRESHOLD_FH = 4294967\n",
               "THRESHOLD_FH = 13200\nP_DIVISOR = 1000\n", "THRESHOLD_FH = 4294967\n",
               "3: THRESHOLD_FH = 4294967 | THRESHOLD_FH = 13200\n4:  | P_DIVISOR = 1000\n");
  // A word is an amount that only the compiler knows.
  ExpectLimits("THRESHOLD_FH = 13\n", "THRESHOLD_FH = HIGH\n",
               "THRESHOLD_FH = 13200\nP_DIVISOR = 1000\n", "THRESHOLD_FH = HIGH\n",
               "3: THRESHOLD_FH = HIGH | THRESHOLD_FH = 13200\n4:  | P_DIVISOR = 1000\n");
}

TEST(Merge, LimitsThatNobodyEditedChangeTheirScale) {
  ExpectLimits("THRESHOLD_FH = 13\nVALUE = 0\n", "THRESHOLD_FH = 13\nVALUE = 1\n",
               "THRESHOLD_FH = 13200\nVALUE = 0\nP_DIVISOR = 1000\n",
               "THRESHOLD_FH = 13200\nVALUE = 1\nP_DIVISOR = 1000\n");
}

TEST(Merge, AnEditedTextThatNobodyWroteStays) {
  EXPECT_EQ(Merge("", "", "[A]\nB = 1\n").text, "[A]\nB = 1\n");
  EXPECT_EQ(Merge("", "[A]\nB = 1\n", "").text, "[A]\nB = 1\n");
  EXPECT_EQ(Merge("[A]\nB = 1\n", "[A]\nB = 1\n", "").text, "");
}

}  // namespace
}  // namespace rux::imports
