// DEFINE, IFDEF and INCLUDE sections, by what becomes of the rest of the script.
//
// The value of a word shows in the value that it is the type of: type 0 takes nothing more, type 1
// takes
// one sub-string more, type 2 takes three.
#include <filesystem>
#include <stdexcept>

#include "tests/support/host.h"
#include "tests/support/script_test.h"

namespace {

using PreprocessTest = ScriptTest;

constexpr char kTotalOfOne[] = "Parse::No more sections(total = 1).\n";

// DEFINE

TEST_F(PreprocessTest, LaterDefinitionReplacesTheEarlierOne) {
  EXPECT_EQ(Check("[DEFINE]\nVT = 2\n[DEFINE]\nVT = 1\n[GLOBAL]\nG_X = VT,7\n", 1), Lines{});
  gccCompEnd();
  EXPECT_EQ(Check("[DEFINE]\nVT = 1\n[DEFINE]\nVT = 2\n[GLOBAL]\nG_X = VT,7\n", 0),
            Lines{"Error[board.rux:6]: [GLOBAL]:G_X, Not enough sub-strings for value type VT.\n"});
}

TEST_F(PreprocessTest, DefinitionsTakeNumbersAndWordsDefinedBefore) {
  for (const char* definition : {"VT = 1", "VT = 0x1", "VT = 0X00000001", "VT = \"1\"",
                                 "ONE = 1\nVT = ONE", "ONE = 1\nTWO = ONE\nVT = TWO"}) {
    SCOPED_TRACE(definition);
    EXPECT_EQ(Check(std::string("[DEFINE]\n") + definition + "\n[GLOBAL]\nG_X = VT,7\n", 1),
              Lines{});
    gccCompEnd();
  }
}

TEST_F(PreprocessTest, DefinitionThatMeansNothingIsZeroWithoutAMessage) {
  for (const char* text : {"abc", "12345678901", "LATER"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Parse(std::string("[DEFINE]\nVT = ") + text +
                    "\nLATER = 1\n[GLOBAL]\nG_X = VT\nG_Y = VT,7\n"),
              Lines{"Parse::No more sections(total = 2).\n"});
    EXPECT_EQ(gccCheck(), 1u);
    EXPECT_EQ(host::TakeMessages(),
              Lines{"Warning[board.rux:6]: [GLOBAL]:G_Y, Too much sub-strings for value type "
                    "VT.\n"});
    gccCompEnd();
  }
}

TEST_F(PreprocessTest, WordsAreComparedExactly) {
  EXPECT_EQ(Check("[DEFINE]\nVt = 1\n[GLOBAL]\nG_X = VT,7\nG_Y = Vt,7\n", 0),
            Lines{"Error[board.rux:4]: [GLOBAL]:G_X, Value operator type(VT) is invalid.\n"});
}

struct BadDefinition {
  std::string item;
  std::string word;
  std::string complaint;
};

class BadDefinitionTest : public ScriptTest {
 protected:
  // `head` takes two lines. The item stays in its section, so the check of the whole model
  // complains once more.
  void ExpectComplaints(const std::string& head, const std::string& section) {
    const BadDefinition rows[] = {{"A", "A", "No sub-string.\n"},
                                  {"A =", "A", "No sub-string.\n"},
                                  {"1A = 5", "1A", "Entry name is invalid.\n"},
                                  {"0 = 0", "0", "Entry name is invalid.\n"}};
    for (const BadDefinition& row : rows) {
      SCOPED_TRACE(row.item);
      const std::string complaint =
          "Error[board.rux:3]: [" + section + "]:" + row.word + ", " + row.complaint;
      EXPECT_EQ(Parse(head + row.item + "\n[GLOBAL]\nG_X = " + row.word + "\n"),
                (Lines{complaint, "Parse::No more sections(total = 2).\n"}));
      EXPECT_EQ(gccCheck(), 0u);
      EXPECT_EQ(host::TakeMessages(),
                (Lines{complaint, "Error[board.rux:5]: [GLOBAL]:G_X, Value operator type(" +
                                      row.word + ") is invalid.\n"}));
      gccCompEnd();
    }
  }
};

TEST_F(BadDefinitionTest, DefineItemIsToldWhileReadingAndDefinesNothing) {
  ExpectComplaints("\n[DEFINE]\n", "DEFINE");
}

TEST_F(BadDefinitionTest, IfdefItemIsToldWhileReadingAndDefinesNothing) {
  ExpectComplaints("[IFDEF]\nDEFINEWORD = X\n", "IFDEF");
}

TEST_F(PreprocessTest, DefinitionOfSeveralPartsTakesTheFirstWithAWarning) {
  const std::string warning =
      "Warning[board.rux:2]: [DEFINE]:VT, More than one sub-string and get the first one as "
      "sub-string.\n";
  EXPECT_EQ(Parse("[DEFINE]\nVT = 1,2\n[GLOBAL]\nG_X = VT,7\n"),
            (Lines{warning, "Parse::No more sections(total = 2).\n"}));
  EXPECT_EQ(gccCheck(), 1u);
  EXPECT_EQ(host::TakeMessages(), Lines{warning});
}

TEST_F(PreprocessTest, EndOfTheRunForgetsTheWords) {
  Parse("[DEFINE]\nVT = 1\n[IFDEF]\nDEFINEWORD = VT\nVU = 1\n");
  gccCompEnd();
  EXPECT_EQ(Check("[GLOBAL]\nG_X = VT,7\nG_Y = VU,7\n", 0),
            (Lines{"Error[board.rux:2]: [GLOBAL]:G_X, Value operator type(VT) is invalid.\n",
                   "Error[board.rux:3]: [GLOBAL]:G_Y, Value operator type(VU) is invalid.\n"}));
}

// A number is looked for in a text that has no digit to look at; hosts have to expect it.
TEST_F(PreprocessTest, EmptyDefinitionRaisesAndLeavesNoScriptOpen) {
  Write("board.rux", "[INCLUDE]\nFILE = words.rux\n");
  Write("words.rux", "[DEFINE]\nVT = \"\"\n");
  ASSERT_EQ(gccCompStart(ScriptPath("board.rux")), 1u);
  EXPECT_THROW(gccParse(), std::out_of_range);
  gccCompEnd();
  Write("words.rux", "[DEFINE]\nVT = 1\n");
  host::TakeMessages();
  EXPECT_EQ(Parse("[INCLUDE]\nFILE = words.rux\n"), (Lines{kTotalOfOne, kTotalOfOne}));
}

// IFDEF

TEST_F(PreprocessTest, IfdefDefinesItsWordsWhetherItsConditionHoldsOrNot) {
  for (const char* condition : {"KNOWN", "UNKNOWN"}) {
    SCOPED_TRACE(condition);
    EXPECT_EQ(Check(std::string("[DEFINE]\nKNOWN = 1\n[IFDEF]\nDEFINEWORD = ") + condition +
                        "\nVT = 1\nVU = VT\n[GLOBAL]\nG_X = VT,7\nG_Y = VU,7\n",
                    1),
              Lines{});
    gccCompEnd();
  }
}

TEST_F(PreprocessTest, FirstIfdefItemThatIsNoConditionIsDroppedWithoutAMessage) {
  EXPECT_EQ(Parse("[IFDEF]\nLOST = 1\nVT = 1\n[GLOBAL]\nG_X = VT,7\nG_Y = LOST,7\n"),
            Lines{"Parse::No more sections(total = 2).\n"});
  EXPECT_EQ(gccCheck(), 0u);
  EXPECT_EQ(host::TakeMessages(),
            (Lines{"Error[board.rux:0]: [IFDEF]:DEFINEWORD, This ENTRY does not exist.\n",
                   "Error[board.rux:6]: [GLOBAL]:G_Y, Value operator type(LOST) is invalid.\n"}));
}

TEST_F(PreprocessTest, LaterConditionIsADefinitionOfThatName) {
  EXPECT_EQ(Check("[IFDEF]\nDEFINEWORD = X\nDEFINEWORD = 1\n[GLOBAL]\nG_X = DEFINEWORD,7\n", 0),
            Lines{"Error[board.rux:3]: [IFDEF], Entry DEFINEWORD is redefined.\n"});
}

TEST_F(PreprocessTest, ConditionWithoutAWordIsToldWhileReading) {
  EXPECT_EQ(Parse("[IFDEF]\nDEFINEWORD\nVT = 1\n"),
            (Lines{"Error[board.rux:2]: [IFDEF]:DEFINEWORD, No sub-string.\n", kTotalOfOne}));
}

// INCLUDE

TEST_F(PreprocessTest, IncludedFileIsReadWhereItIsNamed) {
  Write("words.rux", "[DEFINE]\nVT = 1\n");
  EXPECT_EQ(Check("[DEFINE]\nBEFORE = VT\n"
                  "[INCLUDE]\nFILE = words.rux\n"
                  "[DEFINE]\nAFTER = VT\n"
                  "[GLOBAL]\nG_A = BEFORE\nG_B = AFTER,7\n",
                  1),
            Lines{});
}

TEST_F(PreprocessTest, IncludedFileGivesItsOwnTotalAndItsOwnPlaces) {
  Write("sub/inner.rux", "\n[MORVRUX]\nVERSION = 1\nBAD = 1\n[FOO]\n");
  EXPECT_EQ(
      Parse("[PROPERTY]\n[INCLUDE]\nFILE = sub\\inner.rux\n[GROUP]\nBAD = 1\n"),
      (Lines{"Add Item(NO. = 2) of section(MORVRUX) failed.\n",
             "Warning[inner.rux:4]: [MORVRUX]:BAD, This ENTRY is ignored because of invalid "
             "entry name.\n",
             "Create section(2, FOO) object failed.\n", "Parse::No more sections(total = 2).\n",
             "Add Item(NO. = 1) of section(GROUP) failed.\n",
             "Warning[board.rux:5]: [GROUP]:BAD, This ENTRY is ignored because of invalid "
             "entry name.\n",
             "Parse::No more sections(total = 3).\n"}));
}

TEST_F(PreprocessTest, ChecksNameTheIncludedFile) {
  Write("sub/inner.rux", "[PROPERTY]\n1 = x\n");
  EXPECT_EQ(Check("[PROPERTY]\n[INCLUDE]\nFILE = sub\\inner.rux\n[PROPERTY]\n2 = x\n", 0),
            (Lines{"Error[inner.rux:2]: [PROPERTY]:1, Entry name is invalid.\n",
                   "Error[board.rux:5]: [PROPERTY]:2, Entry name is invalid.\n"}));
}

TEST_F(PreprocessTest, NestedIncludesAreFoundBesideTheFileThatNamesThem) {
  Write("sub/a.rux", "[INCLUDE]\nFILE = b.rux\nFILE = deep\\c.rux\nFILE = d.rux\n");
  Write("sub/b.rux", "[B]\n");
  Write("sub/deep/c.rux", "[INCLUDE]\nFILE = e.rux\n");
  Write("sub/deep/e.rux", "[E]\n");
  Write("d.rux", "[D]\n");
  EXPECT_EQ(Parse("[INCLUDE]\nFILE = sub\\a.rux\nFILE = d.rux\n"),
            (Lines{"Create section(1, B) object failed.\n", kTotalOfOne,
                   "Create section(1, E) object failed.\n", kTotalOfOne, kTotalOfOne,
                   "Warning[a.rux:4], [INCLUDE]:FILE FILE d.rux cannot be loaded.\n", kTotalOfOne,
                   "Create section(1, D) object failed.\n", kTotalOfOne, kTotalOfOne}));
}

TEST_F(PreprocessTest, SlashesSeparateNothing) {
  Write("sub/inner.rux", "[INCLUDE]\nFILE = beside.rux\n[GROUP]\nBAD = 1\n");
  Write("beside.rux", "");
  EXPECT_EQ(Parse("[INCLUDE]\nFILE = sub/inner.rux\n"),
            (Lines{"Parse::No more sections(total = 0).\n",
                   "Add Item(NO. = 1) of section(GROUP) failed.\n",
                   "Warning[sub/inner.rux:4]: [GROUP]:BAD, This ENTRY is ignored because of "
                   "invalid entry name.\n",
                   "Parse::No more sections(total = 2).\n", kTotalOfOne}));
}

TEST_F(PreprocessTest, MissingIncludeIsWarnedOfWithItsTextAsWritten) {
  EXPECT_EQ(
      Parse("[INCLUDE]\nFILE = \"no, such.rux\"\n[FOO]\n"),
      (Lines{"Warning[board.rux:2], [INCLUDE]:FILE FILE \"no, such.rux\" cannot be loaded.\n",
             "Create section(2, FOO) object failed.\n", "Parse::No more sections(total = 2).\n"}));
}

TEST_F(PreprocessTest, MissingIncludeCostsOnlyItself) {
  Write("words.rux", "[DEFINE]\nVT = 1\n");
  EXPECT_EQ(Parse("[INCLUDE]\nFILE = none.rux\nFILE = words.rux\n[GLOBAL]\nG_X = VT,7\n"),
            (Lines{"Warning[board.rux:2], [INCLUDE]:FILE FILE none.rux cannot be loaded.\n",
                   kTotalOfOne, "Parse::No more sections(total = 2).\n"}));
  EXPECT_EQ(gccCheck(), 1u);
  EXPECT_EQ(host::TakeMessages(), Lines{});
}

TEST_F(PreprocessTest, QuotesAroundAFileNameAreNotPartOfIt) {
  Write("a, b.rux", "");
  EXPECT_EQ(Parse("[INCLUDE]\nFILE = \"a, b.rux\"\n"),
            (Lines{"Parse::No more sections(total = 0).\n", kTotalOfOne}));
}

TEST_F(PreprocessTest, IncludeOfSeveralPartsTakesTheFirstWithAWarning) {
  const std::string warning =
      "Warning[board.rux:2]: [INCLUDE]:FILE, More than one sub-string and get the first one as "
      "sub-string.\n";
  Write("b.rux", "[B]\n");
  EXPECT_EQ(Parse("[INCLUDE]\nFILE = none.rux,b.rux\n"),
            (Lines{warning,
                   "Warning[board.rux:2], [INCLUDE]:FILE FILE none.rux,b.rux cannot be loaded.\n",
                   kTotalOfOne}));
  gccCompEnd();
  EXPECT_EQ(Parse("[INCLUDE]\nFILE = b.rux,none.rux\n"),
            (Lines{warning, "Create section(1, B) object failed.\n", kTotalOfOne, kTotalOfOne}));
}

struct BadInclude {
  const char* item;
  const char* complaint;
};

TEST_F(PreprocessTest, IncludeItemThatFailsItsCheckLoadsNothing) {
  const BadInclude rows[] = {{"FILE", "FILE, No sub-string.\n"},
                             {"FILE = \"\"", "FILE, No sub-string.\n"},
                             {"NAME = b.rux", "NAME, Entry name is invalid.\n"},
                             {"file = b.rux", "file, Entry name is invalid.\n"}};
  Write("b.rux", "[B]\n");
  const int loads = host::PluginLoads();
  for (const BadInclude& row : rows) {
    SCOPED_TRACE(row.item);
    EXPECT_EQ(Parse(std::string("[INCLUDE]\n") + row.item + "\n"),
              (Lines{std::string("Error[board.rux:2]: [INCLUDE]:") + row.complaint, kTotalOfOne}));
    gccCompEnd();
  }
  EXPECT_EQ(host::PluginLoads(), loads);
}

TEST_F(PreprocessTest, EveryIncludeLoadsThePluginAgain) {
  Write("a.rux", "[INCLUDE]\nFILE = b.rux\n");
  Write("b.rux", "");
  const int loads = host::PluginLoads();
  Parse("[INCLUDE]\nFILE = a.rux\nFILE = none.rux\n");
  EXPECT_EQ(host::PluginLoads(), loads + 3);
}

TEST_F(PreprocessTest, FileThatIncludesItselfIsWarnedOf) {
  EXPECT_EQ(Parse("[INCLUDE]\nFILE = board.rux\n"),
            (Lines{"Warning[board.rux:2], [INCLUDE]:FILE FILE board.rux cannot be loaded.\n",
                   kTotalOfOne}));
}

TEST_F(PreprocessTest, IncludeLoopIsWarnedOfWhereItCloses) {
  Write("sub/a.rux", "\n[INCLUDE]\nFILE = ..\\board.rux\n");
  EXPECT_EQ(
      Parse("[INCLUDE]\nFILE = sub\\a.rux\n[FOO]\n"),
      (Lines{"Warning[a.rux:3], [INCLUDE]:FILE FILE ..\\board.rux cannot be loaded.\n", kTotalOfOne,
             "Create section(2, FOO) object failed.\n", "Parse::No more sections(total = 2).\n"}));
}

TEST_F(PreprocessTest, OneFileCanBeIncludedAgainAndAgain) {
  Write("words.rux", "[DEFINE]\nVT = 1\n");
  EXPECT_EQ(Parse("[INCLUDE]\nFILE = words.rux\nFILE = words.rux\n[GLOBAL]\nG_X = VT,7\n"),
            (Lines{kTotalOfOne, kTotalOfOne, "Parse::No more sections(total = 2).\n"}));
  EXPECT_EQ(gccCheck(), 1u);
  EXPECT_EQ(host::TakeMessages(), Lines{});
}

TEST_F(PreprocessTest, ScriptPathWithoutABackslashLeavesIncludesToTheCurrentFolder) {
  Write("sub/board.rux", "[INCLUDE]\nFILE = inner.rux\n");
  Write("inner.rux", "[GROUP]\nBAD = 1\n");
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder());
  EXPECT_EQ(gccCompStart("sub/board.rux"), 1u);
  gccParse();
  std::filesystem::current_path(before);
  EXPECT_EQ(host::TakeMessages(),
            (Lines{"Add Item(NO. = 1) of section(GROUP) failed.\n",
                   "Warning[inner.rux:2]: [GROUP]:BAD, This ENTRY is ignored because of invalid "
                   "entry name.\n",
                   kTotalOfOne, kTotalOfOne}));
}

}  // namespace
