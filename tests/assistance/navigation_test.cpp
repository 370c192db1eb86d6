// Definitions, references, highlights, outlines, folds and selections.
#include <gmock/gmock.h>

#include "assistance/definition.h"
#include "assistance/folding.h"
#include "assistance/highlights.h"
#include "assistance/outline.h"
#include "assistance/references.h"
#include "assistance/selection.h"
#include "tests/assistance/marked.h"

namespace {

using namespace rux::assistance;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Definitions(const SourceFiles& files) {
  const Marked marked(files);
  return marked.Shown(DefinitionsAt(marked.place()));
}
std::vector<std::string> Definitions(const std::string& script) {
  return Definitions(SourceFiles{{"main.rux", script}});
}
std::vector<std::string> References(const std::string& script, bool with_definitions = false) {
  const Marked marked(script);
  return marked.Shown(ReferencesAt(marked.place(), with_definitions));
}

constexpr char kGroups[] = "[GROUP]\nPARENT = 0\nNAME = BOARD\n[GROUP]\nPARENT = BOARD\n";

TEST(DefinitionTest, LeadsFromANameToWhereItIsGiven) {
  EXPECT_THAT(Definitions(std::string(kGroups) + "[SENSOR]\nPARENT = BO^ARD\n"),
              ElementsAre("3: BOARD"));
  EXPECT_THAT(Definitions("[DEFINE]\nV = 3\n[ACTION]\nNAME = GO\n[GLOBAL]\nG_A = V, GO^, 1\n"),
              ElementsAre("4: GO"));
  EXPECT_THAT(Definitions("[DEFINE]\nV = 3\n[ACTION]\nNAME = GO\n[GLOBAL]\nG_A = ^V, GO, 1\n"),
              ElementsAre("2: V"));
  EXPECT_THAT(Definitions("[SYSTEM]\nTYPE = A^\n[DEFINE]\nA = 1\n[DEFINE]\nA = 2\n"),
              ElementsAre("6: A"));
}

TEST(DefinitionTest, LeadsIntoOtherFiles) {
  EXPECT_THAT(Definitions({{"main.rux", "[INCLUDE]\nFILE = a.rux\n[SYSTEM]\nTYPE = A^\n"},
                           {"a.rux", "[DEFINE]\nA = 1\n"}}),
              ElementsAre("a.rux:2: A"));
  EXPECT_THAT(Definitions({{"main.rux", "[INCLUDE]\nFILE = a^.rux\n"}, {"a.rux", "[DEFINE]\n"}}),
              ElementsAre("a.rux:1: "));
}

TEST(DefinitionTest, LeadsFromListsToSensorsAndBack) {
  EXPECT_THAT(Definitions("[PELMGROUP]\nSENSORS = 1, 0x^10\n[SENSOR]\nID = 16\n"),
              ElementsAre("4: 16"));
  EXPECT_THAT(Definitions("[PELMGROUP]\nSENSORS = 1, 0x10\n[SENSOR]\nID = 1^6\n"),
              ElementsAre("2: 0x10"));
}

TEST(DefinitionTest, OfAWordThatHidesAGlobalThereAreTwo) {
  EXPECT_THAT(Definitions("[DEFINE]\nV = 1\nG_A = 5\n[GLOBAL]\nG_A = V, 1\nG_B = V, G_^A\n"),
              ElementsAre("5: G_A", "3: G_A"));
}

TEST(DefinitionTest, IsThePlaceItselfOrNothing) {
  EXPECT_THAT(Definitions("[GROUP]\nNAME = A^\n"), ElementsAre("2: A"));
  EXPECT_THAT(Definitions("[GROUP]\nPARENT = A^\n"), IsEmpty());
  EXPECT_THAT(Definitions("[GROUP]^\nPARENT = A\n"), IsEmpty());
  EXPECT_THAT(Definitions("^"), IsEmpty());
}

TEST(DefinitionTest, OfAnArgumentIsItsNumber) {
  EXPECT_THAT(
      Definitions("[DEFINE]\nV = 1\n[ACTION]\nNAME = GO\nARGNUMBER = 2\nVALUE = V, A^RG2\n"),
      ElementsAre("5: 2"));
}

TEST(ReferencesTest, AreInAllFiles) {
  const Marked marked(
      {{"main.rux", "[DEFINE]\nA^ = 1\n[INCLUDE]\nFILE = a.rux\n[SYSTEM]\nTYPE = A\n"},
       {"a.rux", "[DEFINE]\nB = A\n"}});
  EXPECT_THAT(marked.Shown(ReferencesAt(marked.place(), false)), ElementsAre("a.rux:2: A", "6: A"));
  EXPECT_THAT(marked.Shown(ReferencesAt(marked.place(), true)),
              ElementsAre("2: A", "a.rux:2: A", "6: A"));
}

TEST(ReferencesTest, ToASectionAreByItsNameOrItsId) {
  const std::string script =
      "[PELMGROUP]\nNAME = ALL\nID = 1\nPID = 0\nSENSORS = 5\n"
      "[PELMGROUP]\nNAME = SOME\nID = 2\nPID = 1\n[SENSOR]\nNAME = A\nID = ";
  EXPECT_THAT(References("[PELMGROUP]\nNAME = A^LL\nID = 1\n[PELMGROUP]\nID = 2\nPID = 0x1\n"),
              ElementsAre("6: 0x1"));
  EXPECT_THAT(References(script + "5^\n"), ElementsAre("5: 5"));
  EXPECT_THAT(References(std::string(kGroups) + "[SENSOR]\nPARENT = B^OARD\n", true),
              ElementsAre("3: BOARD", "5: BOARD", "7: BOARD"));
}

TEST(HighlightsTest, AreInTheFile) {
  const Marked marked(
      {{"main.rux", "[DEFINE]\nA = 1\n[INCLUDE]\nFILE = a.rux\n[SYSTEM]\nTYPE = A^\n"},
       {"a.rux", "[DEFINE]\nB = A\n"}});
  std::vector<std::string> rows;
  for (const Highlight& each : HighlightsAt(marked.place())) {
    rows.push_back(std::to_string(each.range.begin) + (each.is_definition ? " definition" : ""));
  }
  EXPECT_THAT(rows, ElementsAre("9 definition", "54"));
}

// Names with details, and what is below indented.
void Show(const std::vector<OutlineEntry>& entries, const std::string& indent,
          std::vector<std::string>& rows) {
  for (const OutlineEntry& entry : entries) {
    rows.push_back(indent + entry.name + " (" + entry.detail + ")");
    Show(entry.children, indent + "  ", rows);
  }
}

TEST(OutlineTest, HasSectionsAndWhatTheyName) {
  const Machine machine(
      "[DEFINE]\nA = 1\n[SENSOR]\nNAME = FAN\nID = 0x5\nTYPE = A\nP_UNIT = rpm\nVALUE_X = A, 1\n"
      "[SENSER]\nNAME = B\n[TABLE]\nNAME = CURVE\n0.255 = 4\n");
  std::vector<std::string> rows;
  Show(OutlineOf(machine.index(), 0), "", rows);
  EXPECT_THAT(rows, ElementsAre("DEFINE ()", "  A (1)", "FAN (SENSOR 0x5)", "  P_UNIT (rpm)",
                                "  VALUE_X (A, 1)", "CURVE (TABLE)", "  0.255 (4)"));
  const OutlineEntry fan = OutlineOf(machine.index(), 0)[1];
  EXPECT_EQ(machine.TextAt(0, fan.name_range), "FAN");
  EXPECT_EQ(machine.TextAt(0, fan.range),
            "[SENSOR]\nNAME = FAN\nID = 0x5\nTYPE = A\nP_UNIT = rpm\nVALUE_X = A, 1");
}

TEST(FindSymbolsTest, FindsCharactersInTheirOrder) {
  const Machine machine(
      "[DEFINE]\nFAN_MAX = 1\nMAX_FAN = 2\nOTHER = 3\n[GROUP]\nNAME = FANS\n[SENSOR]\nP_FAN = 1\n");
  std::vector<std::string> rows;
  for (const FoundSymbol& each : FindSymbols(machine.index(), "fan", 10)) {
    rows.push_back(each.container + " " + each.name);
  }
  EXPECT_THAT(rows, ElementsAre("[DEFINE] FAN_MAX", "[GROUP] FANS", "[DEFINE] MAX_FAN"));
  EXPECT_EQ(FindSymbols(machine.index(), "fan", 2).size(), 2U);
}

TEST(FoldingTest, HasSectionsJoinedLinesAndComments) {
  const Machine machine(
      "# one\n# two\n[GROUP]\nNAME = A\n\n[PELMGROUP]\nSENSORS = 1, \\\n 2\n# last\n[X]\n");
  std::vector<std::string> rows;
  for (const Fold& fold : FoldsOf(machine.index(), 0)) {
    rows.push_back(std::to_string(fold.first_line) + "-" + std::to_string(fold.last_line));
  }
  EXPECT_THAT(rows, ElementsAre("1-2", "3-4", "6-8", "7-8"));
}

TEST(SelectionTest, Grows) {
  const Marked marked("[GROUP]\n[PELMGROUP]\nSENSORS = 1, 2^2, 3\n");
  std::vector<std::string> rows;
  for (const ByteRange range : SelectionsAt(marked.place())) {
    rows.push_back(marked.machine().TextAt(0, range));
  }
  EXPECT_THAT(rows,
              ElementsAre("22", "1, 22, 3", "SENSORS = 1, 22, 3", "[PELMGROUP]\nSENSORS = 1, 22, 3",
                          "[GROUP]\n[PELMGROUP]\nSENSORS = 1, 22, 3\n"));
}

}  // namespace
