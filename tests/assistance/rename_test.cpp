// New names, and why some are refused.
#include "assistance/rename.h"

#include <gmock/gmock.h>

#include "tests/assistance/marked.h"

namespace {

using namespace rux::assistance;
using testing::ElementsAre;

// The edits as "3: BOARD -> RACK", or why there are none.
std::vector<std::string> Renamed(const SourceFiles& files, const std::string& name) {
  const Marked marked(files);
  const Renaming renaming = Rename(marked.place(), name);
  std::vector<std::string> rows;
  if (!renaming.refusal.empty()) rows.push_back(renaming.refusal);
  for (const Edit& edit : renaming.edits)
    rows.push_back(marked.Shown(edit.at) + " -> " + edit.text);
  return rows;
}
std::vector<std::string> Renamed(const std::string& script, const std::string& name) {
  return Renamed(SourceFiles{{"main.rux", script}}, name);
}

TEST(RenameTest, ChangesANameInAllFiles) {
  EXPECT_THAT(Renamed({{"main.rux", "[GROUP]\nNAME = BO^ARD\n[INCLUDE]\nFILE = a.rux\n"},
                       {"a.rux", "[SENSOR]\nPARENT = BOARD\n[SENSOR]\nPARENT = \"BOARD\"\n"}},
                      "RACK"),
              ElementsAre("2: BOARD -> RACK", "a.rux:2: BOARD -> RACK", "a.rux:4: BOARD -> RACK"));
  EXPECT_THAT(Renamed("[DEFINE]\nA = 1\nB = A\n[DEFINE]\nA = 2\n[SYSTEM]\nTYPE = ^A\n", "C"),
              ElementsAre("2: A -> C", "5: A -> C", "3: A -> C", "7: A -> C"));
  EXPECT_THAT(Renamed("[DEFINE]\nV = 1\n[GLOBAL]\nG_A = V, 1\nG_B = V, G_^A\n", "G_C"),
              ElementsAre("4: G_A -> G_C", "5: G_A -> G_C"));
  EXPECT_THAT(Renamed("[DEFINE]\nV = 1\n[ACTION]\nNAME = X\nVALUE_1 = V, 1\nVALUE_2 = V, VALUE^_1\n"
                      "[ACTION]\nNAME = Y\nVALUE_1 = V, 1\n",
                      "VALUE_7"),
              ElementsAre("5: VALUE_1 -> VALUE_7", "6: VALUE_1 -> VALUE_7"));
}

TEST(RenameTest, QuotesWhatHasToBeQuoted) {
  EXPECT_THAT(Renamed("[GROUP]\nNAME = A^\n[SENSOR]\nPARENT = \"A\"\n", "a, b"),
              ElementsAre("2: A -> \"a, b\"", "4: A -> a, b"));
  EXPECT_THAT(Renamed("[GROUP]\nNAME = A^\n", "a b"), ElementsAre("2: A -> a b"));
}

TEST(RenameTest, ChangesIds) {
  EXPECT_THAT(Renamed("[PELMGROUP]\nSENSORS = 1, 16\n[SENSOR]\nID = 0x1^0\n", "0x20"),
              ElementsAre("4: 0x10 -> 0x20", "2: 16 -> 0x20"));
  EXPECT_THAT(Renamed("[SENSOR]\nID = 1\n[SENSOR]\nID = 2^\n", "0x1"),
              ElementsAre("0x1 is taken, at main.rux:2"));
  EXPECT_THAT(Renamed("[SENSOR]\nID = 2^\n", "two"), ElementsAre("two is not a number"));
  EXPECT_THAT(Renamed("[DEFINE]\nA = 2\n[PELMGROUP]\nSENSORS = A\n[SENSOR]\nID = 2^\n", "3"),
              ElementsAre("main.rux:4: the number is given by the word A"));
  // At such a place, the word is meant.
  EXPECT_THAT(Renamed("[DEFINE]\nA = 2\n[SENSOR]\nID = A^\n", "B"),
              ElementsAre("2: A -> B", "4: A -> B"));
}

TEST(RenameTest, RefusesWhatIsTaken) {
  EXPECT_THAT(Renamed("[GROUP]\nNAME = A^\n[GROUP]\nNAME = B\n", "B"),
              ElementsAre("B is taken, at main.rux:4"));
  EXPECT_THAT(Renamed("[GROUP]\nNAME = A^\n[SENSOR]\nNAME = B\n", "B"), ElementsAre("2: A -> B"));
  EXPECT_THAT(Renamed("[GROUP]\nNAME = A^\n[SENSOR]\nPARENT = B\n", "B"),
              ElementsAre("B is referred to already, without a definition"));
  EXPECT_THAT(Renamed("[SENSOR]\nP_A^ = 1\nVALUE_B = V, 1\n", "P_B"),
              ElementsAre("the section has that name for hosts already"));
}

TEST(RenameTest, RefusesWhatIsNoName) {
  EXPECT_THAT(Renamed("[GROUP]\nNAME = A^\n", ""),
              ElementsAre("a name has at least one character"));
  EXPECT_THAT(Renamed("[GROUP]\nNAME = A^\n", "a\"b"),
              ElementsAre("a double quote cannot be in a name"));
  EXPECT_THAT(Renamed("[GROUP]\nNAME = A^\n", "a\nb"), ElementsAre("a name is on one line"));
  EXPECT_THAT(Renamed("[GROUP]\nNAME = A^\n", "0"), ElementsAre("0 is the root of all groups"));
  EXPECT_THAT(Renamed("[DEFINE]\nA^ = 1\n", "2ND"),
              ElementsAre("the name must not begin with a digit"));
  EXPECT_THAT(Renamed("[DEFINE]\nA^ = 1\n", "B = C"), ElementsAre("B = C cannot be a key"));
  EXPECT_THAT(Renamed("[GLOBAL]\nG_A^ = V, 1\n", "B"),
              ElementsAre("the name must begin with G_ and continue after it"));
  EXPECT_THAT(Renamed("[ACTION]\nVALUE_1^ = V, 1\n", "VALUE_X"),
              ElementsAre("a number must follow VALUE_"));
  EXPECT_THAT(Renamed("[SENSOR]\nVALUE_A^ = V, 1\n", "VALUE_INIT"),
              ElementsAre("the name must begin with VALUE_ and continue after it"));
}

TEST(RenameTest, RefusesWhatWouldMeanSomethingElse) {
  EXPECT_THAT(Renamed("[DEFINE]\nA^ = 1\n", "G_A"),
              ElementsAre("operands that begin with G_ are not words"));
  EXPECT_THAT(Renamed("[DEFINE]\nA^ = 1\n", "-5"), ElementsAre("-5 is read as a number"));
  EXPECT_THAT(Renamed("[DEFINE]\nA^ = 1\n", "BUSTYPE_SMBUS"),
              ElementsAre("the compiler gives BUSTYPE_SMBUS a meaning of its own"));
  EXPECT_THAT(Renamed("[DEFINE]\nBUSTYPE_SMBUS^ = 1\n", "A"),
              ElementsAre("the compiler knows BUSTYPE_SMBUS by its name"));
  EXPECT_THAT(Renamed("[DEFINE]\nG_X = 1\n[GLOBAL]\nG_A^ = V, 1\n", "G_X"),
              ElementsAre("the word G_X would hide it"));
  EXPECT_THAT(Renamed("[DEFINE]\nV = 1\nG_X^ = 1\n[GLOBAL]\nG_X = V, 1\nG_Y = V, G_X\n", "A"),
              ElementsAre("G_X is also a defined word, whose number is compiled"));
}

TEST(RenameTest, RefusesWhatAWordHides) {
  EXPECT_THAT(Renamed("[DEFINE]\nV = 1\nG_X = 1\n[GLOBAL]\nG_X^ = V, 1\nG_Y = V, G_X\n", "G_A"),
              ElementsAre("G_X is also a defined word, whose number is compiled"));
}

TEST(RenameTest, PreparesWhatCanBeRenamed) {
  const Marked marked("[GROUP]\nNAME = BO^ARD\n");
  const Renamable found = RenamableAt(marked.place());
  EXPECT_EQ(found.name, "BOARD");
  EXPECT_EQ(marked.machine().TextAt(0, found.range), "BOARD");
  const Marked key("[GROUP]\nNA^ME = BOARD\n");
  EXPECT_EQ(RenamableAt(key.place()).refusal, "no name of the script's own is here");
  const Marked argument("[DEFINE]\nV = 1\n[ACTION]\nARGNUMBER = 1\nVALUE = V, AR^G1\n");
  EXPECT_EQ(RenamableAt(argument.place()).refusal, "the number of an argument is its name");
}

}  // namespace
