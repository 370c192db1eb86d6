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
  ExpectMerged(edited, written, edited, "7: # list:1 | \n");
}

TEST(Merge, AnEditedTextThatNobodyWroteStays) {
  EXPECT_EQ(Merge("", "", "[A]\nB = 1\n").text, "[A]\nB = 1\n");
  EXPECT_EQ(Merge("", "[A]\nB = 1\n", "").text, "[A]\nB = 1\n");
  EXPECT_EQ(Merge("[A]\nB = 1\n", "[A]\nB = 1\n", "").text, "");
}

}  // namespace
}  // namespace rux::imports
