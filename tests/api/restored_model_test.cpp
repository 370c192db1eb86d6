// Checks of models that a debug meta file restored, alone and with a script: files as no script
// writes them.
#include "tests/api/debug_bytes.h"

namespace {

constexpr std::uint32_t kTableSection = 0x20000008;
constexpr std::uint32_t kTypeEntry = 0x10028002;
constexpr std::uint32_t kChildGroupEntry = 0x10028007;

class RestoredModelTest : public DebugTest {
 protected:
  // Checks the model; returns its messages and, after them, the error that was raised.
  Lines CheckRestored(std::uint32_t valid) {
    host::TakeMessages();
    Lines lines;
    try {
      EXPECT_EQ(CheckModel(), valid);
      lines = host::TakeMessages();
    } catch (const std::out_of_range& error) {
      lines = host::TakeMessages();
      lines.push_back(error.what());
    }
    return lines;
  }

  // The same for a script that is read while these words are defined.
  Lines CheckWithWords(const DefinedWords& words, const std::string& script, std::uint32_t valid) {
    EXPECT_EQ(Load(DebugMeta(words, {})), "1");
    Parse(script);
    const Lines lines = CheckRestored(valid);
    gccCompEnd();
    return lines;
  }

  // In line 5 of the script.
  static std::string Group(const std::string& list, const Texts& entries) {
    return Section(Object(kGroupSection, 2, 5, 0, "GROUP") + list, entries);
  }
};

TEST_F(RestoredModelTest, AnEntryThatIsMissingIsToldByItsKeywordAndHasNoNameThen) {
  const Texts given = {Entry(Object(kParentEntry, 1, 7, 0, "STRAY"), Numbers({0}))};
  ASSERT_EQ(Load(DebugMeta({}, {{Group(List({"board.rux"}), given)}})), "1");
  const Lines missing = {"Error[board.rux:7]: [GROUP]:PARENT, This ENTRY does not exist.\n",
                         "Error[board.rux:0]: [GROUP]:NAME, This ENTRY does not exist.\n",
                         "Error[board.rux:0]: [GROUP]:CHILDGROUP, This ENTRY does not exist.\n"};
  EXPECT_EQ(CheckRestored(0), missing);
  EXPECT_EQ(CheckRestored(0), missing);
  const Texts kept = {Entry(Object(kParentEntry, 1, 7, 0, ""), Numbers({0})),
                      Template(kNameEntry, 1),
                      Template(kChildGroupEntry, 1),
                      Template(0x10080002, 6),
                      Template(0x10080003, 6),
                      Template(0x10080004, 6),
                      Template(0x10080005, 6)};
  EXPECT_SAME_BYTES(OutputD(), DebugMeta({}, {{Group(List({"board.rux"}), kept)}}));
}

// Nothing is required of these.
TEST_F(RestoredModelTest, AGroupWithoutAParentHasNoneThatIsDefined) {
  const Texts empty = {Template(kParentEntry, 2), Template(kNameEntry, 2),
                       Template(kChildGroupEntry, 2)};
  ASSERT_EQ(Load(DebugMeta({}, {{Group(List({"board.rux"}), empty), Group("", empty)}})), "1");
  const std::string undefined = "Error[board.rux:5]: Parent of this group hasn't been defined.\n";
  EXPECT_EQ(CheckRestored(0), (Lines{undefined, undefined}));
}

// A nameless action counts as named "" where parameters are counted, and nowhere else.
TEST_F(RestoredModelTest, SectionsWithoutANameAreNotFoundByTheEmptyName) {
  const std::string action = Section(Object(kActionSection, 2, 1, 0, "ACTION") + List({"old.rux"}),
                                     {Template(kNameEntry, 2)});
  const std::string table = Section(Object(kTableSection, 2, 2, 0, "TABLE"),
                                    {Template(kNameEntry, 2), Template(kTypeEntry, 2)});
  ASSERT_EQ(Load(DebugMeta({}, {{action}, {table}})), "1");
  Parse(
      "[DEFINE]\nT3 = 3\nT10 = 10\n"
      "[GLOBAL]\nG_A = T3,\nG_B = T3,,5\nG_C = T10,,5\n"
      "[GROUP]\nPARENT = 0\nNAME = A\nCHILDGROUP = 0\n");
  EXPECT_EQ(
      CheckRestored(0),
      (Lines{"Error[board.rux:5]: [GLOBAL]:G_A, The ACTION with NAME  does not exist.\n",
             "Error[board.rux:6]: [GLOBAL]:G_B, The ACTION with NAME  does not exist.\n",
             "Error[board.rux:6]: [GLOBAL]:G_B The ACTION  needs 0 PARAMS, but total 1 PARAMS "
             "here.\n",
             "Error[board.rux:7]: [GLOBAL]:G_C, The TABLE with NAME  does not exist.\n"}));
}

// The word 0x can only be restored. As an ID it passes the first check, which looks at words first;
// a comparison of IDs looks at numbers first and raises.

const DefinedWords kOddWord = {{"0x", 5}};

// NAME is in line 2, 7, 12...
std::string Devices(const std::vector<std::pair<std::string, std::string>>& names_and_ids) {
  std::string script;
  for (const auto& [name, id] : names_and_ids) {
    script += "[DEVICE]\nNAME = " + name + "\nID = " + id + "\nINITFLAG = 0\nCONTROLMASK = 0\n";
  }
  return script;
}

constexpr char kRaised[] = "basic_string::at";

TEST_F(RestoredModelTest, AnIdThatIsComparedWithNoneRaisesNothing) {
  EXPECT_EQ(CheckWithWords(kOddWord, Devices({{"A", "0x"}}), 1), Lines{});
}

TEST_F(RestoredModelTest, AnIdThatIsComparedRaisesWhereItIs) {
  EXPECT_EQ(CheckWithWords(kOddWord, Devices({{"A", "7"}, {"B", "0x"}}), 0), Lines{kRaised});
  EXPECT_EQ(CheckWithWords(kOddWord, Devices({{"A", "0x"}, {"B", "7"}}), 0), Lines{kRaised});
  EXPECT_EQ(CheckWithWords(kOddWord, Devices({{"A", "7"}, {"B", "8"}, {"B", "0x"}}), 0),
            Lines{kRaised});
}

TEST_F(RestoredModelTest, ANameThatIsFoundBeforeEndsTheComparison) {
  const std::string redefined =
      "Error[board.rux:7]: [DEVICE], NAME A is redefined.It has been defined in "
      "Line[board.rux:2].\n";
  EXPECT_EQ(CheckWithWords(kOddWord, Devices({{"A", "0x"}, {"A", "7"}}), 0), Lines{redefined});
  EXPECT_EQ(CheckWithWords(kOddWord, Devices({{"A", "7"}, {"A", "0x"}}), 0), Lines{redefined});
  EXPECT_EQ(CheckWithWords(kOddWord, Devices({{"A", "7"}, {"A", "0x"}, {"C", "9"}}), 0),
            (Lines{redefined, kRaised}));
  EXPECT_EQ(CheckWithWords(kOddWord, Devices({{"A", "7"}, {"A", "0x"}, {"C", "7"}}), 0),
            (Lines{redefined,
                   "Error[board.rux:13]: [DEVICE], ID 7 is redefined.It has been defined in "
                   "Line[board.rux:3].\n"}));
}

TEST_F(RestoredModelTest, AnIdThatIsAnotherWordIsComparedWithNone) {
  DefinedWords words = kOddWord;
  words.emplace_back("WORD", 3);
  EXPECT_EQ(CheckWithWords(words, Devices({{"A", "7"}, {"A", "0x"}, {"C", "WORD"}}), 0),
            Lines{"Error[board.rux:7]: [DEVICE], NAME A is redefined.It has been defined in "
                  "Line[board.rux:2].\n"});
}

TEST_F(RestoredModelTest, AWalkForAnIdRaisesOnlyAtWhatItComesTo) {
  const auto sensor = [](const std::string& name, const std::string& id) {
    return "[SENSOR]\nPARENT = G\nNAME = " + name + "\nID = " + id +
           "\nTYPE = 1\nINITFLAG = 0\nCONTROLMASK = 0\nVALUE = T0\n";
  };
  const std::string script =
      "[PELMGROUP]\nNAME = ALL\nID = 1\nPID = 1\nSENSORS = 16, abc, 17\n"
      "[DEFINE]\nT0 = 0\n[GROUP]\nPARENT = 0\nNAME = G\nCHILDGROUP = 0\n" +
      sensor("A", "16") + sensor("B", "0x");
  EXPECT_EQ(CheckWithWords(kOddWord, script, 0),
            (Lines{"Error[board.rux:5]: [PELMGROUP]:SENSORS, The SENSOR with ID abc does not "
                   "exist.\n",
                   kRaised}));
}

}  // namespace
