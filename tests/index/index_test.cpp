// What an index finds in small machines.
#include "index/index.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "tests/index/machine.h"

namespace {

using namespace rux::index;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(IndexTest, WordsCountFromTheirDefinitionOnWhileTheyAreReadAndTheLastOneInTheEnd) {
  const Machine machine(R"([DEFINE]
A = 1
B = A
C = LATER
LATER = 3
[SYSTEM]
TYPE = A
FLAG = NOWHERE
RUXLOOP = 1000
[DEFINE]
A = 2
)");
  EXPECT_THAT(machine.Symbols("DEFINE"),
              ElementsAre("DEFINE.DEFINED_WORD A: 2 11 <- 3 7", "DEFINE.DEFINED_WORD B: 3 <-",
                          "DEFINE.DEFINED_WORD C: 4 <-", "DEFINE.DEFINED_WORD LATER: 5 <-"));
  EXPECT_THAT(machine.Missing(),
              ElementsAre("4: DEFINE.DEFINED_WORD LATER", "8: DEFINE.DEFINED_WORD NOWHERE"));
  const Index& index = machine.index();
  EXPECT_EQ(index.words().Find("A"), 2U);
  EXPECT_EQ(index.words().Find("B"), 1U);
  EXPECT_EQ(index.words().Find("C"), 0U);
  // Which of both definitions counts.
  const Id a = index.Find(kWords, "A");
  EXPECT_EQ(index.TakenDefinitionOf(a), index.DefinitionsOf(a)[1]);
  const Reference& while_read = index.references()[index.ReferencesTo(a)[0]];
  EXPECT_EQ(while_read.definition, index.DefinitionsOf(a)[0]);
  const Reference& checked = index.references()[index.ReferencesTo(a)[1]];
  EXPECT_EQ(checked.definition, index.DefinitionsOf(a)[1]);
}

TEST(IndexTest, ConditionsNameWordsThatAreDefinedAbove) {
  const Machine machine(R"([DEFINE]
A = 1
[IFDEF]
DEFINEWORD = A
B = 2
[IFDEF]
DEFINEWORD = LATER
LATER = 3
[IFDEF]
C = B
DEFINEWORD = B
)");
  EXPECT_THAT(machine.Symbols(),
              ElementsAre("INCLUDE.FILE main.rux: 1 <-", "DEFINE.DEFINED_WORD A: 2 <- 4",
                          "DEFINE.DEFINED_WORD B: 5 <- 11", "DEFINE.DEFINED_WORD LATER: 8 <-",
                          "DEFINE.DEFINED_WORD DEFINEWORD: 11 <-"));
  EXPECT_THAT(machine.Missing(), ElementsAre("7: DEFINE.DEFINED_WORD LATER"));
}

TEST(IndexTest, WhatTheLibraryRefusesDefinesNoWord) {
  const Machine machine("[DEFINE]\nEMPTY =\n2ND = 2\n[SYSTEM]\nTYPE = EMPTY\nFLAG = 2ND\n");
  EXPECT_THAT(machine.Symbols("DEFINE"), IsEmpty());
  // 2ND is a number with something after it.
  EXPECT_THAT(machine.Missing(), ElementsAre("5: DEFINE.DEFINED_WORD EMPTY"));
}

TEST(IndexTest, GroupsNameTheirParents) {
  const Machine machine(R"([GROUP]
PARENT = 0
NAME = BOARD
CHILDGROUP = 1
[GROUP]
PARENT = BOARD
NAME = FANS
CHILDGROUP = 0
[SENSOR]
PARENT = FANS
[SENSOR]
PARENT = 0
[SENSOR]
PARENT = "NO SUCH"
)");
  EXPECT_THAT(machine.Symbols("GROUP"),
              ElementsAre("GROUP.NAME BOARD: 3 <- 6", "GROUP.NAME FANS: 7 <- 10"));
  EXPECT_THAT(machine.Exempt(), ElementsAre("2: GROUP.NAME 0"));
  EXPECT_THAT(machine.Missing(), ElementsAre("12: GROUP.NAME 0", "14: GROUP.NAME NO SUCH"));
}

TEST(IndexTest, IdsAreComparedAsNumbers) {
  const Machine machine(R"([DEFINE]
FIRST = 0x10
[PELMGROUP]
NAME = ALL
ID = 1
PID = 0
SENSORS = 0x10, 0x11, 18
[PELMGROUP]
NAME = SOME
ID = 2
PID = 0x1
SENSORS = FIRST
[PELMGROUP]
NAME = OTHERS
ID = 3
PID = 7
SENSORS =
[SENSOR]
NAME = A
ID = 16
[SENSOR]
NAME = B
ID = 17
[SENSOR]
NAME = C
ID = 19
)");
  EXPECT_THAT(
      machine.Symbols("PELMGROUP.ID"),
      ElementsAre("PELMGROUP.ID 1: 5 <- 11", "PELMGROUP.ID 2: 10 <-", "PELMGROUP.ID 3: 15 <-"));
  EXPECT_THAT(
      machine.Symbols("SENSOR.ID"),
      ElementsAre("SENSOR.ID 16: 20 <- 7 12", "SENSOR.ID 17: 23 <- 7", "SENSOR.ID 19: 26 <-"));
  // A sensor refers to the lists that have it.
  EXPECT_THAT(machine.Symbols("PELMGROUP.SENSORS"),
              ElementsAre("PELMGROUP.SENSORS 0x10: 7 12 <- 20", "PELMGROUP.SENSORS 0x11: 7 <- 23",
                          "PELMGROUP.SENSORS 18: 7 <-"));
  EXPECT_THAT(machine.Symbols("DEFINE"), ElementsAre("DEFINE.DEFINED_WORD FIRST: 2 <- 12"));
  EXPECT_THAT(machine.Exempt(), ElementsAre("6: PELMGROUP.ID 0"));
  EXPECT_THAT(machine.Missing(),
              ElementsAre("7: SENSOR.ID 18", "16: PELMGROUP.ID 7", "26: PELMGROUP.SENSORS 19"));
}

TEST(IndexTest, OfRepeatedNamesTheFirstCounts) {
  const Machine machine(R"([DEFINE]
VT_CALL = 3
[ACTION]
NAME = GO
[ACTION]
NAME = GO
NAME = AGAIN
[GLOBAL]
G_A = VT_CALL, GO
G_B = VT_CALL, AGAIN
)");
  EXPECT_THAT(machine.Symbols("ACTION.NAME"), ElementsAre("ACTION.NAME GO: 4 6 <- 9"));
  EXPECT_THAT(machine.Missing(), ElementsAre("10: ACTION.NAME AGAIN"));
  const Index& index = machine.index();
  const Id go = index.Find({language::SECTION_ACTION, language::ENTRY_NAME}, "GO");
  EXPECT_EQ(index.references()[index.ReferencesTo(go)[0]].definition, index.DefinitionsOf(go)[0]);
}

TEST(IndexTest, OperandsNameGlobalsValuesArgumentsAndWords) {
  const Machine machine(R"([DEFINE]
VT_CALC = 2
TEN = 10
[GLOBAL]
G_A = VT_CALC, +, TEN, 5
G_B = VT_CALC, ==, G_A, G_NO, VALUE_1, ARG0
[ACTION]
NAME = GO
VALUE_1 = VT_CALC, +, ARG1, ARG2
VALUE_2 = VT_CALC, -, VALUE_1, VALUE_3
VALUE_3 = VT_CALC, *, ARG0x2, ARG3
ARGNUMBER = 2
[ACTION]
NAME = NONE
VALUE_1 = VT_CALC, +, ARG0, ARG1
)");
  EXPECT_THAT(machine.Symbols("ACTION"),
              ElementsAre("ACTION.NAME GO: 8 <-", "ACTION.VALUE_OF_ACTION VALUE_1: 9 <- 10",
                          "ACTION.VALUE_OF_ACTION VALUE_2: 10 <-",
                          "ACTION.VALUE_OF_ACTION VALUE_3: 11 <- 10",
                          "ACTION.ARGNUMBER ARGNUMBER: 12 <-", "ACTION.NAME NONE: 14 <-",
                          "ACTION.VALUE_OF_ACTION VALUE_1: 15 <-", "ACTION.ARGNUMBER ARG1: 12 <- 9",
                          "ACTION.ARGNUMBER ARG2: 12 <- 9 11", "ACTION.ARGNUMBER ARG3: 12 <-",
                          "ACTION.ARGNUMBER ARG0: <- 15", "ACTION.ARGNUMBER ARG1: <-"));
  EXPECT_THAT(machine.Symbols("GLOBAL"), ElementsAre("GLOBAL.G G_A: 5 <- 6", "GLOBAL.G G_B: 6 <-"));
  EXPECT_THAT(machine.Exempt(),
              ElementsAre("6: ACTION.ARGNUMBER ARG0", "15: ACTION.ARGNUMBER ARG0"));
  EXPECT_THAT(machine.Missing(),
              ElementsAre("6: GLOBAL.G G_NO", "6: ACTION.VALUE_OF_ACTION VALUE_1",
                          "11: ACTION.ARGNUMBER ARG3", "15: ACTION.ARGNUMBER ARG1"));
}

TEST(IndexTest, CallsNameActionsAndPassOnArguments) {
  const Machine machine(R"([DEFINE]
VT_CALL = 3
VT_CALL_IF = 102
VT_TABLE = 10
[TABLE]
NAME = CURVE
0.255 = 1
[ACTION]
NAME = GO
ARGNUMBER = 1
[GLOBAL]
G_A = VT_CALL, GO, ARG1
G_B = VT_CALL, GO, ARG2
G_C = VT_CALL_IF, G_A, GO, ARG1
G_D = VT_TABLE, CURVE, G_A
G_E = VT_TABLE, GO, 1
[REPEATER]
R = 3, GO, ARG7, G_A
S = G_A, STOP
)");
  EXPECT_THAT(machine.Symbols("ACTION.NAME"), ElementsAre("ACTION.NAME GO: 9 <- 12 13 14 18"));
  EXPECT_THAT(machine.Symbols("TABLE"),
              ElementsAre("TABLE.NAME CURVE: 6 <- 15", "TABLE.TABLE_ROW 0.255: 7 <-"));
  EXPECT_THAT(machine.Symbols("GLOBAL.G G_A"), ElementsAre("GLOBAL.G G_A: 12 <- 14 15 18 19"));
  EXPECT_THAT(machine.Exempt(),
              ElementsAre("12: ACTION.ARGNUMBER ARG1", "18: ACTION.ARGNUMBER ARG7"));
  EXPECT_THAT(machine.Missing(),
              ElementsAre("13: ACTION.ARGNUMBER ARG2", "14: ACTION.ARGNUMBER ARG1",
                          "16: TABLE.NAME GO", "19: ACTION.NAME STOP"));
}

TEST(IndexTest, PartsThatTheLibraryDropsReferToNothing) {
  const Machine machine(R"([DEFINE]
VT_CONST = 1
VT_LIST = 7
VT_OTHER = 13
[GLOBAL]
G_A = VT_CONST, 1, NO
G_B = VT_LIST, 1, 2, 3, 4, NO
G_C = VT_OTHER, NO
G_D = VT_NONE, NO
[SYSTEM]
TYPE = 1, NO
)");
  EXPECT_THAT(machine.Missing(), ElementsAre("9: DEFINE.DEFINED_WORD VT_NONE"));
}

TEST(IndexTest, AWordHidesTheGlobalOfItsNameInWhatIsCompiled) {
  const Machine machine(R"([DEFINE]
VT_CONST = 1
G_A = 5
[GLOBAL]
G_A = VT_CONST, 1
G_B = VT_CONST, G_A
)");
  const Index& index = machine.index();
  const Id item = index.FindItem(1, language::ENTRY_G) + 1;
  const Span<Reference> found = index.ReferencesIn(item);
  ASSERT_EQ(found.size(), 3U);  // the type is the first one
  EXPECT_EQ(found[1].symbol, index.Find({language::SECTION_GLOBAL, language::ENTRY_G}, "G_A"));
  EXPECT_FALSE(found[1].hides);
  EXPECT_EQ(found[2].symbol, index.Find(kWords, "G_A"));
  EXPECT_TRUE(found[2].hides);
}

TEST(IndexTest, PropertiesBelongToTheirSections) {
  const Machine machine(R"([PROPERTY]
Colour = red
[SENSOR]
P_UNIT = mV
VALUE_RAW = VT, 1
[SENSOR]
P_UNIT = rpm
)");
  EXPECT_THAT(machine.Symbols(),
              ElementsAre("INCLUDE.FILE main.rux: 1 <-", "PROPERTY.PROPERTY Colour: 2 <-",
                          "SENSOR.P P_UNIT: 4 <-", "SENSOR.VALUE_OF_SENSOR VALUE_RAW: 5 <-",
                          "SENSOR.P P_UNIT: 7 <-"));
}

TEST(IndexTest, IncludedFilesAreReadAtTheirPlace) {
  const Machine machine({{"main.rux", R"([DEFINE]
A = 1
[INCLUDE]
FILE = parts\fans.rux
FILE = gone.rux
[DEFINE]
B = FAN
C = A
)"},
                         {"parts/fans.rux", "[DEFINE]\nFAN = A\nA = 2\n"}});
  EXPECT_THAT(machine.Symbols(),
              ElementsAre("INCLUDE.FILE main.rux: 1 <-",
                          "INCLUDE.FILE parts/fans.rux: parts/fans.rux:1 <- 4",
                          "DEFINE.DEFINED_WORD A: 2 parts/fans.rux:3 <- parts/fans.rux:2 8",
                          "DEFINE.DEFINED_WORD FAN: parts/fans.rux:2 <- 7",
                          "DEFINE.DEFINED_WORD B: 7 <-", "DEFINE.DEFINED_WORD C: 8 <-"));
  EXPECT_THAT(machine.Missing(), ElementsAre("5: INCLUDE.FILE gone.rux"));
  EXPECT_EQ(machine.index().words().Find("C"), 2U);
}

TEST(IndexTest, AFileThatIsIncludedTwiceIsThereOnce) {
  const Machine machine({{"main.rux", R"([INCLUDE]
FILE = a.rux
[DEFINE]
A = 2
[INCLUDE]
FILE = a.rux
)"},
                         {"a.rux", "[DEFINE]\nA = 1\n[SYSTEM]\nTYPE = A\n"}});
  EXPECT_THAT(machine.Symbols("DEFINE"),
              ElementsAre("DEFINE.DEFINED_WORD A: a.rux:2 4 <- a.rux:4"));
  EXPECT_EQ(machine.index().words().Find("A"), 1U);
  EXPECT_EQ(machine.index().FindFile("a.rux"), 1U);
  EXPECT_EQ(machine.index().FindFile("b.rux"), kNone);
}

TEST(IndexTest, RangesAreThoseOfTheTexts) {
  const Machine machine(
      "[GROUP]  # front\n  NAME = \"A, \\\n B\"  # comment\n[SENSOR]\nPARENT=\"A, B\"\n");
  const Index& index = machine.index();
  const Id group = index.Find({language::SECTION_GROUP, language::ENTRY_NAME}, "A,  B");
  ASSERT_NE(group, kNone);
  const Definition& definition = index.definitions()[index.TakenDefinitionOf(group)];
  EXPECT_EQ(machine.TextAt(0, definition.name), "A, \\\n B");
  EXPECT_EQ(machine.TextAt(0, index.RangeOfItem(definition.item)), "NAME = \"A, \\\n B\"");
  EXPECT_EQ(machine.TextAt(0, index.RangeOfSection(definition.section)),
            "[GROUP]  # front\n  NAME = \"A, \\\n B\"");
  EXPECT_EQ(machine.TextAt(0, index.references()[0].name), "A, B");
}

TEST(IndexTest, UnknownSectionsAndRejectedItemsDefineNothing) {
  const Machine machine("[SENSER]\nNAME = A\n[GROUP]\nOTHER = B\n[MORVRUX]\nAUTHOR = NO\n");
  EXPECT_THAT(machine.Symbols(), ElementsAre("INCLUDE.FILE main.rux: 1 <-"));
  EXPECT_THAT(machine.Missing(), IsEmpty());
  EXPECT_EQ(machine.index().sections().size(), 3U);
  EXPECT_EQ(machine.index().sections()[0].kind, nullptr);
}

TEST(IndexTest, EmptyTextsAndHalvesOfItemsAreIndexed) {
  for (const char* script :
       {"", "[", "[SENSOR", "[SENSOR]\nID", "[SENSOR]\nID =", "[GLOBAL]\nG_A = \"",
        "[DEFINE]\nV = 3\n[GLOBAL]\nG_A = V,", "[PELMGROUP]\nSENSORS = ,,"}) {
    SCOPED_TRACE(script);
    const Machine machine{std::string(script)};
    EXPECT_LE(machine.index().references().size(), 4U);
  }
}

}  // namespace
