// What can be added, and what can be a word.
#include "assistance/refactorings.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "assistance/place.h"
#include "tests/assistance/marked.h"
#include "tests/generators/source_files.h"

namespace {

using namespace rux::assistance;
using testing::ElementsAre;
using testing::IsEmpty;

using Add = void (*)(const Place& at, Refactorings& refactorings);

std::vector<std::string> TitlesOf(Add add, const SourceFiles& files) {
  const Marked marked(files);
  Refactorings refactorings;
  add(marked.place(), refactorings);
  std::vector<std::string> titles;
  for (const Refactoring& each : refactorings) titles.push_back(each.title);
  return titles;
}
std::vector<std::string> TitlesOf(Add add, const std::string& script) {
  return TitlesOf(add, SourceFiles{{"main.rux", script}});
}

// The text of a file after the only one that is offered.
std::string After(Add add, const SourceFiles& files, Id file) {
  const Marked marked(files);
  Refactorings refactorings;
  add(marked.place(), refactorings);
  if (refactorings.size() != 1) return std::to_string(refactorings.size()) + " are offered";
  return Edited(marked.machine().index(), file, refactorings.front().edits);
}
std::string After(Add add, const std::string& script) {
  return After(add, SourceFiles{{"main.rux", script}}, 0);
}

TEST(CompleteSectionTest, AddsRequiredEntriesAfterTheLastItem) {
  EXPECT_EQ(After(CompleteSection, "[DEVICE]\nNAME   = FAN^  # left\nID     = 1\n# more\n"),
            "[DEVICE]\nNAME   = FAN  # left\nID     = 1\nINITFLAG = \nCONTROLMASK = \n# more\n");
  EXPECT_EQ(After(CompleteSection,
                  "[PELMGROUP]\r\nNAME    = A\r\nID      = 1\r\nSENSORS = 1, \\\r\n"
                  "  2 ; two\r\n^"),
            "[PELMGROUP]\r\nNAME    = A\r\nID      = 1\r\nSENSORS = 1, \\\r\n"
            "  2 ; two\r\nPID     = \r\n");
  EXPECT_EQ(After(CompleteSection, "[TABLE]^"), "[TABLE]\nNAME = \nTYPE = ");
}

TEST(CompleteSectionTest, AddsWhatHalfOfTheOthersHave) {
  const std::string group = "[GROUP]\nPARENT = 0\nCHILDGROUP = 0\nNAME = ";
  const std::string first = group + "A^\n";
  const std::string with = "B\nVALUE_INIT = V\n";
  EXPECT_THAT(TitlesOf(CompleteSection, first + group + with),
              ElementsAre("Add the usual entry VALUE_INIT"));
  EXPECT_THAT(TitlesOf(CompleteSection, first + group + with + group + "C\n"),
              ElementsAre("Add the usual entry VALUE_INIT"));
  EXPECT_THAT(TitlesOf(CompleteSection, first + group + with + group + "C\n" + group + "D\n"),
              IsEmpty());
}

TEST(CompleteSectionTest, NeedsAKindWithKeys) {
  EXPECT_THAT(TitlesOf(CompleteSection, "# nothing^\n"), IsEmpty());
  EXPECT_THAT(TitlesOf(CompleteSection, "[SENSER]\nNAME^ = A\n"), IsEmpty());
  EXPECT_THAT(TitlesOf(CompleteSection, "[GLOBAL]^\n"), IsEmpty());
}

constexpr char kLists[] =
    "[PELMGROUP]\nNAME = ALL\nSENSORS = 1, 2 # all\n[PELMGROUP]\nNAME = HOT\nSENSORS = 0x3\n";

TEST(AddToListsTest, AddsAnIdToTheListsThatLackIt) {
  const std::string lists = kLists;
  EXPECT_EQ(After(AddToLists, lists + "[SENSOR]\nNAME = CPU\nID = 3^\n"),
            "[PELMGROUP]\nNAME = ALL\nSENSORS = 1, 2, 3 # all\n[PELMGROUP]\nNAME = HOT\n"
            "SENSORS = 0x3\n[SENSOR]\nNAME = CPU\nID = 3\n");
  EXPECT_THAT(TitlesOf(AddToLists, lists + "[SENSOR]^\nNAME = CPU\nID = 4\n"),
              ElementsAre("Add ID 4 to the SENSORS of ALL", "Add ID 4 to the SENSORS of HOT"));
  EXPECT_EQ(After(AddToLists,
                  {{"main.rux",
                    "[DEFINE]\nCPU_ID = 9\n[INCLUDE]\nFILE = lists.rux\n"
                    "[SENSOR]\nNAME = C^PU\nID = CPU_ID\n"},
                   {"lists.rux", "[PELMGROUP]\nNAME = ALL\nSENSORS = \"1\"\n"}},
                  1),
            "[PELMGROUP]\nNAME = ALL\nSENSORS = \"1\", CPU_ID\n");
}

TEST(AddToListsTest, IsAboutASensorWithAnIdAndAListWithOne) {
  const std::string lists = kLists;
  EXPECT_THAT(TitlesOf(AddToLists, lists + "[SENSOR]\nNAME = CPU\nID = 4\nTYPE^ = 1\n"), IsEmpty());
  EXPECT_THAT(TitlesOf(AddToLists, lists + "[SENSOR]^\nNAME = CPU\n"), IsEmpty());
  EXPECT_THAT(TitlesOf(AddToLists, lists + "[SENSOR]^\nID = UNKNOWN\n"), IsEmpty());
  EXPECT_THAT(TitlesOf(AddToLists, lists + "[DEVICE]^\nID = 4\n"), IsEmpty());
  EXPECT_THAT(TitlesOf(AddToLists, "[PELMGROUP]\nNAME = A\nSENSORS = 1,\n[SENSOR]\nID = 4^\n"),
              IsEmpty());
}

TEST(AddToListsTest, OffersNoMoreThanAMenuShows) {
  const auto offered_for = [](int lists) {
    std::string script = "[SENSOR]^\nNAME = CPU\nID = 4\n";
    for (int i = 0; i < lists; ++i) script += "[PELMGROUP]\nNAME = A\nSENSORS = 1\n";
    return TitlesOf(AddToLists, script).size();
  };
  EXPECT_EQ(offered_for(50), 50U);
  EXPECT_EQ(offered_for(51), 50U);
}

TEST(ExtractWordTest, DefinesAWordAboveTheSection) {
  EXPECT_EQ(After(ExtractWord,
                  "[SYSTEM]\nTYPE = 1\n\n# The CPU\n[SENSOR]\nNAME = CPU 0\n"
                  "THRESHOLD_FH = 10^0\n"),
            "[SYSTEM]\nTYPE = 1\n\n[DEFINE]\nCPU_0_THRESHOLD_FH = 100\n\n# The CPU\n[SENSOR]\n"
            "NAME = CPU 0\nTHRESHOLD_FH = CPU_0_THRESHOLD_FH\n");
  EXPECT_EQ(After(ExtractWord, "\xEF\xBB\xBF[SYSTEM]\r\nTYPE = ^0x1\r\n"),
            "\xEF\xBB\xBF[DEFINE]\r\nSYSTEM_TYPE = 0x1\r\n\r\n[SYSTEM]\r\nTYPE = SYSTEM_TYPE\r\n");
}

// A byte of any other character becomes a low line.
TEST(ExtractWordTest, NamesWordsInAscii) {
  EXPECT_THAT(TitlesOf(ExtractWord,
                       "[SENSOR]\nNAME = L\xFC"
                       "fter\nTHEORY = 10^0\n"),
              ElementsAre("Define L_FTER_THEORY as 100"));
  EXPECT_THAT(TitlesOf(ExtractWord,
                       "[SENSOR]\nNAME = L\xC3\xBC"
                       "fter\nTHEORY = 10^0\n"),
              ElementsAre("Define L__FTER_THEORY as 100"));
}

TEST(ExtractWordTest, UsesTheDefineSectionBefore) {
  EXPECT_EQ(After(ExtractWord,
                  "[DEFINE]\nA = 1 # one\n[DEVICE]\nNAME = 9\nINITFLAG = 3^\n"
                  "[DEFINE]\nB = 1\n"),
            "[DEFINE]\nA = 1 # one\nDEVICE_9_INITFLAG = 3\n[DEVICE]\nNAME = 9\n"
            "INITFLAG = DEVICE_9_INITFLAG\n[DEFINE]\nB = 1\n");
}

TEST(ExtractWordTest, CallsANumberInAValueByItsField) {
  EXPECT_THAT(
      TitlesOf(ExtractWord, "[DEFINE]\nVT_TABLE = 10\n[GLOBAL]\nG_A = VT_TABLE, CURVE, 7^\n"),
      ElementsAre("Define GLOBAL_G_A_INDEX as 7"));
}

TEST(ExtractWordTest, TakesANameThatHidesNothing) {
  const std::string sensor = "[SENSOR]\nNAME = A\nTHEORY = 10^0\n";
  EXPECT_THAT(TitlesOf(ExtractWord, "[DEFINE]\nA_THEORY = 1\n" + sensor),
              ElementsAre("Define A_THEORY_2 as 100"));
  // What has no definition would get one.
  EXPECT_THAT(TitlesOf(ExtractWord, sensor + "[SYSTEM]\nTYPE = A_THEORY\n"),
              ElementsAre("Define A_THEORY_2 as 100"));
  EXPECT_THAT(TitlesOf(ExtractWord, sensor + "[IFDEF]\nDEFINEWORD = A_THEORY\n"),
              ElementsAre("Define A_THEORY_2 as 100"));
}

TEST(ExtractWordTest, RefusesWhatIsNoNumberOfItsOwn) {
  EXPECT_THAT(TitlesOf(ExtractWord, "[DEFINE]\nA = 1^\n"), IsEmpty());
  EXPECT_THAT(TitlesOf(ExtractWord, "[SENSOR]\nID = 1^\n"), IsEmpty());
  EXPECT_THAT(TitlesOf(ExtractWord, "[ACTION]\nARGNUMBER = 1^\n"), IsEmpty());
  EXPECT_THAT(TitlesOf(ExtractWord, "[REPEATER]\nSCAN = 6^, SCAN, 1\n"), IsEmpty());
  EXPECT_THAT(TitlesOf(ExtractWord, "[SENSOR]\nTHEORY = 12V^\n"), IsEmpty());
  EXPECT_THAT(TitlesOf(ExtractWord, "[SENSOR]\nTHEORY = 1, 2^\n"), IsEmpty());
  EXPECT_THAT(TitlesOf(ExtractWord, "[SENSOR]\nNAME = 1^\n"), IsEmpty());
  EXPECT_THAT(TitlesOf(ExtractWord, "[DEFINE]\nA = 2\n[SENSOR]\nTHEORY = A^\n"), IsEmpty());
  const std::string port = "[DEFINE]\nVT_READ = 4\nBUS = 1\n[GLOBAL]\nG_A = VT_READ, 1, 2, BUS, ";
  EXPECT_THAT(TitlesOf(ExtractWord, port + "0^\n"), IsEmpty());
  EXPECT_THAT(TitlesOf(ExtractWord, port + "7^\n"),
              ElementsAre("Define GLOBAL_G_A_BASE_ADDRESS as 7"));
}

}  // namespace
