// Reading a script: the messages of the parse loop, and what one run leaves to the next.
#include "tests/support/host.h"
#include "tests/support/script_test.h"

namespace {

class ParseTest : public ScriptTest {
 protected:
  // A whole run over a file; returns the messages of gccCheck.
  Lines RunOver(const std::string& name, const std::string& text) {
    Write(name, text);
    EXPECT_EQ(gccCompStart(ScriptPath(name)), 1u);
    gccParse();
    host::TakeMessages();
    gccCheck();
    gccCompEnd();
    return host::TakeMessages();
  }
};

std::string Total(int sections) {
  return "Parse::No more sections(total = " + std::to_string(sections) + ").\n";
}

std::string Ignored(const std::string& place, const std::string& entry) {
  return "Warning[board.rux:" + place + "]: " + entry +
         ", This ENTRY is ignored because of invalid entry name.\n";
}

TEST_F(ParseTest, ScriptWithoutSectionsEndsWithATotalOfZero) {
  EXPECT_EQ(Parse(""), Lines{"Parse::No more sections(total = 0).\n"});
  EXPECT_EQ(gccCheck(), 1u);
  EXPECT_EQ(host::TakeMessages(), Lines{});
}

TEST_F(ParseTest, UnknownSectionIsNumberedFromOneAndItsItemsAreNotLookedAt) {
  EXPECT_EQ(
      Parse("[PROPERTY]\nA = x\n[FOO]\nBAD\n3 = y\n"),
      (Lines{"Create section(2, FOO) object failed.\n", "Parse::No more sections(total = 2).\n"}));
  EXPECT_EQ(gccCheck(), 1u);
  EXPECT_EQ(host::TakeMessages(), Lines{});
}

TEST_F(ParseTest, SectionNamesAreComparedExactly) {
  EXPECT_EQ(Parse("[Sensor]\n[SENSORS]\n[SENSO]\n[]\n"),
            (Lines{"Create section(1, Sensor) object failed.\n",
                   "Create section(2, SENSORS) object failed.\n",
                   "Create section(3, SENSO) object failed.\n",
                   "Create section(4, ) object failed.\n", Total(4)}));
}

TEST_F(ParseTest, RejectedItemIsToldTwiceAndTheItemsBehindItAreRead) {
  EXPECT_EQ(Parse("[GROUP]\nPARENT = 0\n\nCOLOUR = 1\nNAME = g\nCHILDGROUP = 0\n"),
            (Lines{"Add Item(NO. = 2) of section(GROUP) failed.\n", Ignored("4", "[GROUP]:COLOUR"),
                   Total(1)}));
  EXPECT_EQ(gccCheck(), 1u);
  EXPECT_EQ(host::TakeMessages(), Lines{});
}

TEST_F(ParseTest, MessagesOfAMixedScriptComeInReadingOrder) {
  EXPECT_EQ(
      Parse("[FOO]\n"
            "A = 1\n"
            "[GROUP]\n"
            "BAD = 1\n"
            "NAME = g\n"
            "WORSE\n"
            "[MORVRUX]\n"
            "VERSION = 1\n"
            "version = 1\n"
            "[BAR]\n"
            "[INCLUDE]\n"
            "FILE = none.rux\n"),
      (Lines{"Create section(1, FOO) object failed.\n",
             "Add Item(NO. = 1) of section(GROUP) failed.\n", Ignored("4", "[GROUP]:BAD"),
             "Add Item(NO. = 3) of section(GROUP) failed.\n", Ignored("6", "[GROUP]:WORSE"),
             "Add Item(NO. = 2) of section(MORVRUX) failed.\n", Ignored("9", "[MORVRUX]:version"),
             "Create section(4, BAR) object failed.\n",
             "Warning[board.rux:12], [INCLUDE]:FILE FILE none.rux cannot be loaded.\n", Total(5)}));
}

// An operation of the reader's that fails for one section is in plugin_test.

TEST_F(ParseTest, MissingScriptIsAnsweredWithZeroAndNoMessage) {
  EXPECT_EQ(gccCompStart(ScriptPath("none.rux")), 0u);
  EXPECT_EQ(gccCompStart(folder()), 0u);
  EXPECT_EQ(gccCompStart(""), 0u);
  EXPECT_EQ(host::TakeMessages(), Lines{});
}

TEST_F(ParseTest, ParsingWithoutAnOpenScriptSeesNoSections) {
  gccParse();
  EXPECT_EQ(host::TakeMessages(), Lines{Total(0)});
}

TEST_F(ParseTest, AStartThatFailsLeavesNoScriptOpen) {
  Write("board.rux", "[FOO]\n");
  EXPECT_EQ(gccCompStart(ScriptPath("board.rux")), 1u);
  EXPECT_EQ(gccCompStart(ScriptPath("none.rux")), 0u);
  gccParse();
  EXPECT_EQ(host::TakeMessages(), Lines{Total(0)});
}

// The reader refuses files that are open.
TEST_F(ParseTest, ParsingClosesTheScript) {
  Parse("[MORVRUX]\n");
  EXPECT_EQ(gccCompStart(ScriptPath("board.rux")), 1u);
  gccParse();
  gccParse();
  EXPECT_EQ(host::TakeMessages(), (Lines{Total(1), Total(0)}));
}

TEST_F(ParseTest, EndingWithoutARunDoesNothing) {
  gccCompEnd();
  gccCompEnd();
  EXPECT_EQ(gccCheck(), 1u);
  EXPECT_EQ(host::TakeMessages(), Lines{});
}

TEST_F(ParseTest, EndingDropsTheModel) {
  Parse("[MORVRUX]\n");
  gccCompEnd();
  EXPECT_EQ(gccCheck(), 1u);
  EXPECT_EQ(host::TakeMessages(), Lines{});
}

TEST_F(ParseTest, KindsAreCheckedInTheOrderOfTheirFirstSections) {
  EXPECT_EQ(Check("[TABLE]\nX = 1\n[ACTION]\nY = 1\n[TABLE]\nZ = 1\n", 0),
            (Lines{"Error[board.rux:0]: [TABLE]:NAME, This ENTRY does not exist.\n",
                   "Error[board.rux:0]: [TABLE]:TYPE, This ENTRY does not exist.\n",
                   "Error[board.rux:2]: [TABLE]:X, Entry name is invalid.\n",
                   "Error[board.rux:0]: [TABLE]:NAME, This ENTRY does not exist.\n",
                   "Error[board.rux:0]: [TABLE]:TYPE, This ENTRY does not exist.\n",
                   "Error[board.rux:6]: [TABLE]:Z, Entry name is invalid.\n",
                   "Error[board.rux:0]: [ACTION]:NAME, This ENTRY does not exist.\n",
                   "Error[board.rux:4]: [ACTION]:Y, Entry name is invalid.\n"}));
}

TEST_F(ParseTest, OrderOfKindsOutlivesARun) {
  RunOver("first.rux", "[PROPERTY]\n[GLOBAL]\n[DEFINE]\n");
  EXPECT_EQ(RunOver("second.rux",
                    "[DEFINE]\n1 = 1\n[REPEATER]\n1 = 1\n[GLOBAL]\n1 = 1\n"
                    "[PROPERTY]\n1 = 1\n"),
            (Lines{"Error[second.rux:8]: [PROPERTY]:1, Entry name is invalid.\n",
                   "Error[second.rux:6]: [GLOBAL]:1, Entry name is invalid.\n",
                   "Error[second.rux:2]: [DEFINE]:1, Entry name is invalid.\n",
                   "Error[second.rux:4]: [REPEATER]:1, Entry name is invalid.\n"}));
}

// An entry that the script does not give has no place: it shows the first file of the table.
TEST_F(ParseTest, FileTableOutlivesARun) {
  RunOver("first.rux", "[MORVRUX]\n");
  EXPECT_EQ(RunOver("second.rux", "[MORVRUX]\n[PROPERTY]\n1 = x\n"),
            (Lines{"Error[first.rux:0]: [MORVRUX]:VERSION, This ENTRY does not exist.\n",
                   "Error[second.rux:3]: [PROPERTY]:1, Entry name is invalid.\n"}));
  EXPECT_EQ(RunOver("first.rux", "[PROPERTY]\n1 = x\n"),
            Lines{"Error[first.rux:2]: [PROPERTY]:1, Entry name is invalid.\n"});
}

}  // namespace
