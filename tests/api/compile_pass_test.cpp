// The compile pass: from the sections and entries of a script to compiled identifiers and values.
#include <filesystem>
#include <ostream>
#include <stdexcept>

#include "tests/api/meta_bytes.h"

namespace {

// DEFINE rows T0, T1, ... for the value types, and some words.
std::string Types() {
  std::string text = "[DEFINE]\n";
  for (const char* code : {"0",  "1",  "2",  "3",  "4",   "5",   "6",   "7",   "8",   "9",
                           "10", "11", "12", "13", "100", "101", "102", "103", "104", "105"}) {
    text += std::string("T") + code + " = " + code + "\n";
  }
  return text +
         "BUSTYPE_SMBUS = 2\n"
         "WORD = 0x77\n"
         "ARG2 = 0x55\n"
         "G_WORD = 0x56\n"
         "+1 = 9\n";
}

class CompilePassTest : public MetaTest {
 protected:
  // The entry identifiers of the first section of a kind.
  static std::string Ids(std::uint32_t section) {
    return Hex(EntryIds(gcGetSectByIndex(section, 0)));
  }

  // The values of that entry in the first section of that kind, looked up.
  static std::vector<std::string> Shown(std::uint32_t section, std::uint32_t identifier) {
    const GCENTRY entry = gcGetEntryByType(gcGetSectByIndex(section, 0), identifier);
    std::vector<std::string> shown;
    for (std::uint32_t i = 0; i < gcGetValueCount(entry); ++i) {
      shown.push_back(Show(gcGetValueByIndex(entry, i)));
    }
    return shown;
  }
};

using Shows = std::vector<std::string>;

TEST_F(CompilePassTest, EveryCompiledKindHasItsIdentifier) {
  LoadScript(
      "[MORVRUX]\n[PROPERTY]\n[SYSTEM]\n[GROUP]\n[SENSOR]\n[DEVICE]\n"
      "[ACTION]\n[TABLE]\n[PELMGROUP]\n[GLOBAL]\n[REPEATER]\n");
  EXPECT_EQ(HexDump(ReadAll("board.meta").substr(256, 4 + 11 * 8)),
            HexDump(ByteString()
                        .Words({11})
                        .Words({0x01000001, 0})  // MORVRUX
                        .Words({0x01000002, 0})  // PROPERTY
                        .Words({0x01000003, 0})  // SYSTEM
                        .Words({0x01000004, 0})  // GROUP
                        .Words({0x01000005, 0})  // SENSOR
                        .Words({0x01000006, 0})  // DEVICE
                        .Words({0x01000007, 0})  // ACTION
                        .Words({0x01000008, 0})  // TABLE
                        .Words({0x01000009, 0})  // PELMGROUP
                        .Words({0x0100000A, 0})  // GLOBAL
                        .Words({0x0100000B, 0})  // REPEATER
                        .str()));
}

TEST_F(CompilePassTest, DefineIfdefAndIncludeSectionsAreNotCompiled) {
  Write("more.rux", "[PROPERTY]\nB = y\n");
  const std::string meta = Compile(
      "[DEFINE]\nONE = 1\n[IFDEF]\nDEFINEWORD = ONE\n[INCLUDE]\nFILE = more.rux\n"
      "[DEFINE]\nTWO = 2\n[PROPERTY]\nA = x\n");
  // Two PROPERTY sections, each with one entry of one value.
  EXPECT_EQ(HexDump(meta.substr(256, 44)),
            HexDump(ByteString()
                        .Words({2})
                        .Words({0x01000002, 1, 0x03000000, 1, 0x12000000})
                        .Words({0x01000002, 1, 0x03000001, 1, 0x12000001})
                        .str()));
}

TEST_F(CompilePassTest, KindsFollowTheOrderOfTheirFirstSections) {
  const std::string meta = CompileAnyway("[TABLE]\n[ACTION]\n[DEFINE]\n[TABLE]\n[GROUP]\n");
  EXPECT_EQ(HexDump(meta.substr(256, 36)),
            HexDump(ByteString()
                        .Words({4})
                        .Words({0x01000008, 0, 0x01000008, 0, 0x01000007, 0, 0x01000004, 0})
                        .str()));
}

TEST_F(CompilePassTest, EntriesOfAMorvruxSection) {
  LoadScript("[MORVRUX]\nVERSION = 1.0\n");
  EXPECT_EQ(Ids(0x01000001), "0x02000001");
}

TEST_F(CompilePassTest, EntriesOfASystemSection) {
  LoadScript(
      "[SYSTEM]\nTYPE = 1\nMODEL = X\nFLAG = 0\nSOUTHBRIDGE = 1\nNORTHBRIDGE = 2\nRUXLOOP = 3\n"
      "P_SITE = lab\n");
  EXPECT_EQ(Ids(0x01000003),
            Hex({0x02000002, 0x02000013, 0x02000003, 0x02000004, 0x02000005, 0x02000006,  //
                 0x03000000}));
}

TEST_F(CompilePassTest, EntriesOfAGroupSection) {
  LoadScript(
      "[DEFINE]\nT0 = 0\n"
      "[GROUP]\nPARENT = 0\nNAME = G\nCHILDGROUP = 0\nVALUE_INIT = T0\nVALUE_DEINIT = T0\n"
      "VALUE_ENTRY = T0\nVALUE_EXIT = T0\n");
  EXPECT_EQ(Ids(0x01000004), Hex({0x02000014, 0x02000015, 0x02000007,  //
                                  0x05000002, 0x05000003, 0x05000004, 0x05000005}));
}

TEST_F(CompilePassTest, EntriesOfASensorSection) {
  LoadScript(
      "[DEFINE]\nT0 = 0\n"
      "[SENSOR]\nPARENT = G\nNAME = S\nID = 1\nTYPE = 1\nINITFLAG = 1\nCONTROLMASK = 1\n"
      "THEORY = 1\nTHRESHOLD_FH = 1\nTHRESHOLD_WH = 1\nTHRESHOLD_FL = 1\nTHRESHOLD_WL = 1\n"
      "VALUE_INIT = T0\nVALUE_DEINIT = T0\nVALUE_ENTRY = T0\nVALUE_EXIT = T0\nVALUE = T0\n"
      "VALUE_IPMI = T0\nVALUE_RAW = T0\nP_ROOM = A\n");
  EXPECT_EQ(Ids(0x01000005),
            Hex({0x02000014, 0x02000015, 0x02000008, 0x02000002, 0x02000009, 0x0200000A, 0x0200000B,
                 0x0200000C, 0x0200000D, 0x0200000E, 0x0200000F,  // the thresholds
                 0x05000002, 0x05000003, 0x05000004, 0x05000005,  // INIT, DEINIT, ENTRY, EXIT
                 0x05000001, 0x05000000, 0x05000006,              // VALUE, IPMI, RAW
                 0x03000000}));                                   // P_ROOM
}

TEST_F(CompilePassTest, EntriesOfADeviceSection) {
  LoadScript(
      "[DEFINE]\nT0 = 0\n"
      "[DEVICE]\nNAME = D\nID = 1\nINITFLAG = 1\nCONTROLMASK = 1\nP_ROOM = A\n"
      "VALUE_RPM = T0\nVALUE_IPMI = T0\n");
  EXPECT_EQ(Ids(0x01000006), Hex({0x02000015, 0x02000008, 0x02000009, 0x0200000A,  //
                                  0x03000000, 0x05000006, 0x05000000}));
}

TEST_F(CompilePassTest, EntriesOfAnActionSection) {
  LoadScript(
      "[DEFINE]\nT0 = 0\n"
      "[ACTION]\nNAME = A\nARGNUMBER = 1\nVALUE_IPMI = T0\nVALUE = T0\nVALUE_7 = T0\n");
  EXPECT_EQ(Ids(0x01000007), Hex({0x02000015, 0x02000010, 0x05000000, 0x05000001, 0x05000006}));
}

TEST_F(CompilePassTest, EntriesOfAPelmGroupSection) {
  LoadScript("[PELMGROUP]\nNAME = P\nID = 1\nPID = 0\nSENSORS = 1\n");
  EXPECT_EQ(Ids(0x01000009), Hex({0x02000015, 0x02000008, 0x02000011, 0x02000016}));
}

TEST_F(CompilePassTest, EntriesOfGlobalPropertyAndRepeaterSectionsAreCalledByTheirNames) {
  LoadScript(
      "[DEFINE]\nT0 = 0\n[ACTION]\nNAME = BEEP\n[GLOBAL]\nG_A = T0\nG_B = T0\n"
      "[PROPERTY]\nA = x\nB = x\n[REPEATER]\nA = 1,BEEP\nB = 1,BEEP\n");
  EXPECT_EQ(Ids(0x0100000A), Hex({0x04000000, 0x04000001}));
  EXPECT_EQ(Ids(0x01000002), Hex({0x03000000, 0x03000001}));
  EXPECT_EQ(Ids(0x0100000B), Hex({0x06000000, 0x06000001}));
}

TEST_F(CompilePassTest, TheFirstRowOfATableEndsItsSection) {
  LoadScript("[TABLE]\n0 = 1\nTYPE = 1\nNAME = T\n1 = 1\nTYPE = 2\n");
  EXPECT_EQ(Ids(0x01000008), Hex({0x02000015, 0x02000002}));
}

TEST_F(CompilePassTest, ATableWhoseFirstFilledEntryIsARowCompilesToASectionWithoutEntries) {
  LoadScript("[TABLE]\n0 = 1\n[TABLE]\nNAME = T\nTYPE = 1\n");
  EXPECT_EQ(gcGetSectCount(0x01000008), 2u);
  EXPECT_EQ(gcGetEntryCount(gcGetSectByIndex(0x01000008, 0)), 0u);
  EXPECT_EQ(gcGetEntryCount(gcGetSectByIndex(0x01000008, 1)), 2u);
}

TEST_F(CompilePassTest, APropertyOfAPelmGroupThatNoOtherSectionHasEndsItsSection) {
  LoadScript("[PELMGROUP]\nNAME = P\nP_OWN = x\nP_KNOWN = x\n[PROPERTY]\nKNOWN = x\n");
  EXPECT_EQ(Ids(0x01000009), "0x02000015");
}

TEST_F(CompilePassTest, APropertyOfAPelmGroupThatAnotherSectionHasIsCompiled) {
  LoadScript("[PELMGROUP]\nNAME = P\nP_KNOWN = x\nP_OWN = x\n[PROPERTY]\nKNOWN = x\n");
  EXPECT_EQ(Ids(0x01000009), Hex({0x02000015, 0x03000000}));
}

TEST_F(CompilePassTest, TemplatesStandInTheirOwnOrderAndWithoutTheUnfilledOnes) {
  LoadScript("[DEVICE]\nP_A = x\nCONTROLMASK = 1\nNAME = D\n");
  EXPECT_EQ(Ids(0x01000006), Hex({0x02000015, 0x0200000A, 0x03000000}));
}

TEST_F(CompilePassTest, ARepeatedKeyIsCompiledAgainBehindTheTemplates) {
  LoadScript("[DEVICE]\nNAME = D\nNAME = E\nID = 1\n");
  EXPECT_EQ(Ids(0x01000006), Hex({0x02000015, 0x02000008, 0x02000015}));
}

TEST_F(CompilePassTest, GroupsAreReferredToByTheirIndices) {
  LoadScript(
      "[GROUP]\nPARENT = 0\nNAME = A\nCHILDGROUP = 0\n[GROUP]\nPARENT = A\nNAME = B\n"
      "[SENSOR]\nPARENT = B\nNAME = A\n");
  EXPECT_EQ(Shown(0x01000004, 0x02000014), Shows{"0x18000000 string 0"});
  EXPECT_EQ(Shown(0x01000004, 0x02000015), Shows{"0x18000001 string A"});
  const GCSECTION second = gcGetSectByIndex(0x01000004, 1);
  EXPECT_EQ(Hex(ValuesOf(gcGetEntryByType(second, 0x02000014))), "0x18000001");
  EXPECT_EQ(Hex(ValuesOf(gcGetEntryByType(second, 0x02000015))), "0x18000002");
  EXPECT_EQ(Shown(0x01000005, 0x02000014), Shows{"0x18000002 string B"});
  EXPECT_EQ(Shown(0x01000005, 0x02000015), Shows{"0x12000000 string A"});
}

TEST_F(CompilePassTest, AParentGroupThatDoesNotExistIsZero) {
  LoadScript("[SENSOR]\nPARENT = NOWHERE\n");
  EXPECT_EQ(Shown(0x01000005, 0x02000014), Shows{"0x00000000 nothing"});
}

TEST_F(CompilePassTest, OnlyActionsAndGroupsKeepTheirNamesInTablesOfTheirOwn) {
  LoadScript("[ACTION]\nNAME = A\n[DEVICE]\nNAME = D\n[TABLE]\nNAME = T\n[PELMGROUP]\nNAME = P\n");
  EXPECT_EQ(Shown(0x01000007, 0x02000015), Shows{"0x1A000000 string A"});
  EXPECT_EQ(Shown(0x01000006, 0x02000015), Shows{"0x12000000 string D"});
  EXPECT_EQ(Shown(0x01000008, 0x02000015), Shows{"0x12000001 string T"});
  EXPECT_EQ(Shown(0x01000009, 0x02000015), Shows{"0x12000002 string P"});
}

TEST_F(CompilePassTest, NumericKeywordsBecomeNumbersAndOthersStayTexts) {
  LoadScript("[SYSTEM]\nTYPE = 0x10\nMODEL = 16\nFLAG = 16\nRUXLOOP = 12abc\nP_A = 16\n");
  EXPECT_EQ(Shown(0x01000003, 0x02000002), Shows{"0x11000000 number 16"});
  EXPECT_EQ(Shown(0x01000003, 0x02000013), Shows{"0x12000000 string 16"});
  EXPECT_EQ(Shown(0x01000003, 0x02000003), Shows{"0x11000000 number 16"});
  EXPECT_EQ(Shown(0x01000003, 0x02000006), Shows{"0x11000001 number 12"});
  EXPECT_EQ(Shown(0x01000003, 0x03000000), Shows{"0x12000000 string 16"});
}

TEST_F(CompilePassTest, EveryNumericKeywordOfASensorIsANumber) {
  LoadScript(
      "[SENSOR]\nID = 2\nTYPE = 3\nINITFLAG = 4\nCONTROLMASK = 5\nTHEORY = 6\n"
      "THRESHOLD_FH = 7\nTHRESHOLD_WH = 8\nTHRESHOLD_FL = 9\nTHRESHOLD_WL = 10\n");
  const GCSECTION sensor = gcGetSectByIndex(0x01000005, 0);
  ASSERT_EQ(gcGetEntryCount(sensor), 9u);
  for (std::uint32_t i = 0; i < 9; ++i) {
    const tagTBLDATA data = gcGetValueByIndex(gcGetEntryByIndex(sensor, i, nullptr), 0);
    EXPECT_EQ(data.index, 0x11000000 + i);
    EXPECT_EQ(data.data.number, 2 + i);
  }
}

// "+1" is a word of the script as well as a number.
TEST_F(CompilePassTest, ForANumericKeywordTheWordComesBeforeTheNumber) {
  LoadScript(Types() + "[SYSTEM]\nTYPE = +1\nFLAG = WORD\n");
  EXPECT_EQ(Shown(0x01000003, 0x02000002), Shows{"0x11000000 number 9"});
  EXPECT_EQ(Shown(0x01000003, 0x02000003), Shows{"0x11000001 number 119"});
}

TEST_F(CompilePassTest, ANumericKeywordWithAnotherTextHasNoValue) {
  LoadScript("[SYSTEM]\nTYPE = abc\nFLAG = 1\n");
  EXPECT_EQ(Ids(0x01000003), Hex({0x02000002, 0x02000003}));
  EXPECT_EQ(Shown(0x01000003, 0x02000002), Shows{});
}

TEST_F(CompilePassTest, AnEmptyModelIsAnEmptyString) {
  LoadScript("[SYSTEM]\nMODEL = \"\"\n");
  EXPECT_EQ(Shown(0x01000003, 0x02000013), Shows{"0x12000000 string "});
}

TEST_F(CompilePassTest, AListHasAValuePerItem) {
  LoadScript("[PELMGROUP]\nSENSORS = 0x101,2,257,3\n");
  EXPECT_EQ(Shown(0x01000009, 0x02000016), (Shows{"0x11000000 number 257", "0x11000001 number 2",
                                                  "0x11000000 number 257", "0x11000002 number 3"}));
}

TEST_F(CompilePassTest, AnItemThatIsNoNumberEndsAListEvenADefinedWord) {
  LoadScript(Types() + "[PELMGROUP]\nSENSORS = 1,WORD,2\n");
  EXPECT_EQ(Shown(0x01000009, 0x02000016), Shows{"0x11000000 number 1"});
}

TEST_F(CompilePassTest, AnEmptyListHasNoValues) {
  LoadScript("[PELMGROUP]\nSENSORS =\n");
  EXPECT_EQ(Ids(0x01000009), "0x02000016");
  EXPECT_EQ(Shown(0x01000009, 0x02000016), Shows{});
}

TEST_F(CompilePassTest, ARepeaterHasItsCountItsActionAndItsArguments) {
  LoadScript(Types() +
             "[REPEATER]\nTICK = 5,BEEP,G_X,7,ARG3,abc\n[ACTION]\nNAME = BEEP\n"
             "[GLOBAL]\nG_X = T0\n");
  EXPECT_EQ(Shown(0x0100000B, 0x06000000),
            (Shows{"0x11000000 number 5", "0x1A000000 string BEEP", "0x04000000 string X",
                   "0x11000001 number 7", "0x1D000003 number 3", "0xFFFFFFFF nothing"}));
}

TEST_F(CompilePassTest, ARepeaterWhoseCountIsNoNumberHasNoValues) {
  LoadScript(Types() +
             "[ACTION]\nNAME = BEEP\n[GLOBAL]\nG_X = T0\n"
             "[REPEATER]\nA = G_X,BEEP,1\nB = WORD,BEEP,1\nC = 1,BEEP,1\n");
  EXPECT_EQ(Shown(0x0100000B, 0x06000000), Shows{});
  EXPECT_EQ(Shown(0x0100000B, 0x06000001), Shows{});
  EXPECT_EQ(Shown(0x0100000B, 0x06000002).size(), 3u);
}

TEST_F(CompilePassTest, NamesThatDoNotExistAreZero) {
  LoadScript(Types() +
             "[GLOBAL]\nG_X = T3,NONE,5\nG_Y = T10,NONE,5\nG_Z = T102,5,NONE\n"
             "[REPEATER]\nTICK = 5,NONE\n");
  EXPECT_EQ(Hex(ValuesOf(0x0100000A, 0x04000000)), Hex({0x1E000003, 0, 0x11000000}));
  EXPECT_EQ(Hex(ValuesOf(0x0100000A, 0x04000001)), Hex({0x1E00000A, 0, 0x11000000}));
  EXPECT_EQ(Hex(ValuesOf(0x0100000A, 0x04000002)), Hex({0x1E000066, 0x11000000, 0}));
  EXPECT_EQ(Hex(ValuesOf(0x0100000B, 0x06000000)), Hex({0x11000000, 0}));
}

TEST_F(CompilePassTest, EveryOperatorHasItsCode) {
  const struct {
    const char* text;
    std::uint32_t value;
  } rows[] = {{"+", 0x1F000001},  {"-", 0x1F000002},  {"*", 0x1F000003},   {"/", 0x1F000004},
              {"|", 0x1F000005},  {"&", 0x1F000006},  {"%", 0x1F000007},   {"^", 0x1F000008},
              {">>", 0x1F000009}, {"<<", 0x1F00000A}, {"pow", 0x1F000014}, {"==", 0x1F000065},
              {">", 0x1F000066},  {">=", 0x1F000067}, {"!=", 0x1F000068},  {"<", 0x1F000069},
              {"<=", 0x1F00006A}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    LoadScript("[DEFINE]\nT2 = 2\n[GLOBAL]\nG_X = T2," + std::string(row.text) + ",1,2,3,4\n");
    const Words values = ValuesOf(0x0100000A, 0x04000000);
    ASSERT_GE(values.size(), 4u);
    EXPECT_EQ(Hex({values[1]}), Hex({row.value}));
    // Comparisons have two operands more.
    EXPECT_EQ(values.size(), row.value < 0x1F000065 ? 4u : 6u);
    gcUnInit();
  }
}

TEST_F(CompilePassTest, AFileThatCannotBeCreatedGivesZeroAfterACompleteCompilation) {
  Check("[PROPERTY]\nA = x\n", 1);
  EXPECT_EQ(gccOutput(Path("missing/board.meta")), 0u);
  EXPECT_EQ(Hex({g_idxProperty, g_idxString}), "0x03000001 0x12000001");
  EXPECT_EQ(gcGetSectCount(0x01000002), 0u);
}

TEST_F(CompilePassTest, AFolderCannotBeWritten) {
  Check("[PROPERTY]\nA = x\n", 1);
  EXPECT_EQ(gccOutput(folder()), 0u);
}

TEST_F(CompilePassTest, AFileThatTakesNoBytesGivesZero) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no /dev/full here";
  Check("[PROPERTY]\nA = x\n", 1);
  EXPECT_EQ(gccOutput("/dev/full"), 0u);
}

TEST_F(CompilePassTest, CompiledSectionsAreReleasedAfterWriting) {
  Compile("[PROPERTY]\nA = x\n");
  EXPECT_EQ(gcGetSectCount(0x01000002), 0u);
  EXPECT_EQ(g_tblProperty.size(), 1u);
}

TEST_F(CompilePassTest, TheSameModelWrittenTwiceGivesTheSameFile) {
  const std::string first = Compile("[PROPERTY]\nA = x\n[TABLE]\nNAME = T\nTYPE = 1\n3 = 4\n");
  EXPECT_EQ(gccOutput(Path("board.meta")), 1u);
  EXPECT_EQ(HexDump(ReadAll("board.meta").replace(20, 4, 4, '\0')), HexDump(first));
}

// The checks refuse the value and leave its operands empty.
TEST_F(CompilePassTest, AnEmptyOperandRaisesTheNumberErrorAndLeavesNoSections) {
  Check("[DEFINE]\nT4 = 4\n[PROPERTY]\nA = x\n[GLOBAL]\nG_X = T4,1\n", 0);
  EXPECT_THROW(gccOutput(Path("board.meta")), std::out_of_range);
  EXPECT_EQ(gcGetSectCount(0x01000002), 0u);
}

struct ValueRow {
  const char* name;
  const char* text;
  Words values;
};
std::ostream& operator<<(std::ostream& out, const ValueRow& row) { return out << row.text; }

// In each row 5, 6, 7, ... are plain numbers, and are interned in this order.
class ValuePartsTest : public MetaTest, public testing::WithParamInterface<ValueRow> {};

TEST_P(ValuePartsTest, FollowTheType) {
  LoadScript(Types() + "[GLOBAL]\nG_X = " + GetParam().text +
             "\n[ACTION]\nNAME = BEEP\nVALUE_1 = T0\n[TABLE]\nNAME = CURVE\n");
  EXPECT_EQ(Hex(ValuesOf(0x0100000A, 0x04000000)), Hex(GetParam().values));
}

constexpr std::uint32_t d5 = 0x11000000, d6 = 0x11000001, d7 = 0x11000002, d8 = 0x11000003,
                        d9 = 0x11000004, d10 = 0x11000005;
constexpr std::uint32_t kBeep = 0x1A000000, kCurve = 0x1C000000, kX = 0x04000000;

const ValueRow kValueRows[] = {
    {"Type0", "T0", {0x1E000000}},
    {"Type0TakesNoParts", "T0,5", {0x1E000000}},
    {"Type1", "T1,5", {0x1E000001, d5}},
    {"Type1TakesOnePart", "T1,5,6", {0x1E000001, d5}},
    {"Type2Arithmetic", "T2,-,5,6", {0x1E000002, 0x1F000002, d5, d6}},
    {"Type2ArithmeticTakesTwoOperands", "T2,-,5,6,7,8", {0x1E000002, 0x1F000002, d5, d6}},
    {"Type2Comparison", "T2,<,5,6,7,8", {0x1E000002, 0x1F000069, d5, d6, d7, d8}},
    {"Type2OneNumberTwice", "T2,+,5,5", {0x1E000002, 0x1F000001, d5, d5}},
    {"Type3WithoutArguments", "T3,BEEP", {0x1E000003, kBeep}},
    {"Type3", "T3,BEEP,5,G_X,ARG1", {0x1E000003, kBeep, d5, kX, 0x1D000001}},
    {"Type4", "T4,5,6,7,8", {0x1E000004, d5, d6, d7, d8}},
    {"Type5", "T5,5,6,7,8,9", {0x1E000005, d5, d6, d7, d8, d9}},
    {"Type5WithTwoArguments", "T5,5,6,7,8,9,10", {0x1E000005, d5, d6, d7, d8, d9, d10}},
    {"Type6", "T6,5,6", {0x1E000006, d5, d6}},
    {"Type6WithArguments", "T6,5,6,7,G_X", {0x1E000006, d5, d6, d7, kX}},
    {"Type7WithoutArguments", "T7", {0x1E000007}},
    {"Type7", "T7,5,6,7,8", {0x1E000007, d5, d6, d7, d8}},
    {"Type7TakesFourParts", "T7,5,6,7,8,9", {0x1E000007, d5, d6, d7, d8}},
    {"Type8", "T8,5,6,7,8", {0x1E000008, d5, d6, d7, d8}},
    {"Type9", "T9,5,6,7,8,9", {0x1E000009, d5, d6, d7, d8, d9}},
    {"Type10", "T10,CURVE,5", {0x1E00000A, kCurve, d5}},
    {"Type11", "T11,5,6,7,8,9,G_X", {0x1E00000B, d5, d6, d7, d8, d9, kX}},
    {"Type12", "T12,5,6,BUSTYPE_SMBUS,0x00", {0x1E00000C, d5, d6, d7, d8}},
    {"Type13", "T13", {0x1E00000D}},
    {"Type13HasNoParts", "T13,5,6", {0x1E00000D}},
    {"Type100HasNoParts", "T100,5", {0x1E000064}},
    {"Type101", "T101,5", {0x1E000065, d5}},
    {"Type102", "T102,5,BEEP", {0x1E000066, d5, kBeep}},
    {"Type102WithArguments", "T102,5,BEEP,6,7", {0x1E000066, d5, kBeep, d6, d7}},
    {"Type103", "T103,5", {0x1E000067, d5}},
    {"Type104", "T104,VALUE_1", {0x1E000068, 0x05000006}},
    {"Type105HasNoParts", "T105,5", {0x1E000069}},
};

template <class Test>
std::string RowName(const testing::TestParamInfo<Test>& row) {
  return row.param.name;
}

INSTANTIATE_TEST_SUITE_P(Rows, ValuePartsTest, testing::ValuesIn(kValueRows), RowName<ValueRow>);

struct OperandRow {
  const char* name;
  const char* text;
  const char* shown;
};
std::ostream& operator<<(std::ostream& out, const OperandRow& row) { return out << row.text; }

class OperandTest : public MetaTest, public testing::WithParamInterface<OperandRow> {};

TEST_P(OperandTest, BecomesAnIndexOrANumber) {
  LoadScript(Types() + "[GLOBAL]\nG_X = T1," + GetParam().text + "\n[ACTION]\nVALUE_1 = T0\n");
  const GCENTRY entry = gcGetEntryByType(gcGetSectByIndex(0x0100000A, 0), 0x04000000);
  EXPECT_EQ(Show(gcGetValueByIndex(entry, 1)), GetParam().shown);
}

const OperandRow kOperandRows[] = {
    {"Decimal", "16", "0x11000000 number 16"},
    {"Hexadecimal", "0x10", "0x11000000 number 16"},
    {"HexadecimalInCapitals", "0XfF", "0x11000000 number 255"},
    {"Zero", "0", "0x11000000 number 0"},
    {"NumberWithATail", "12abc", "0x11000000 number 12"},
    {"ZeroWithATail", "0abc", "0x11000000 number 0"},
    {"LargestNumber", "-1", "0x11000000 nothing"},
    {"Word", "WORD", "0x11000000 number 119"},
    {"NumberBeforeWord", "+1", "0x11000000 number 1"},
    {"WordBeforeArgument", "ARG2", "0x11000000 number 85"},
    {"WordBeforeGlobal", "G_WORD", "0x11000000 number 86"},
    {"Value", "VALUE", "0x05000001 string "},
    {"ValueOfAName", "VALUE_1", "0x05000006 string 1"},
    {"FixedValue", "VALUE_IPMI", "0x05000000 string IPMI"},
    {"ValueWithAnEmptyName", "VALUE_", "0x05000001 string "},
    {"UnknownValue", "VALUE_NONE", "0x00000000 nothing"},
    {"AlmostAValue", "VALUES", "0xFFFFFFFF nothing"},
    {"Global", "G_X", "0x04000000 string X"},
    {"UnknownGlobal", "G_NONE", "0x00000000 nothing"},
    {"GlobalWithAnEmptyName", "G_", "0x00000000 nothing"},
    {"Argument", "ARG3", "0x1D000003 number 3"},
    {"ArgumentZero", "ARG0", "0x1D000000 number 0"},
    {"HexadecimalArgument", "ARG0x10", "0x1D000010 number 16"},
    {"LargeArgument", "ARG300", "0x1D00012C number 300"},
    {"ArgumentBeyond24Bits", "ARG0x1000000", "0x1E000000 number 0"},  // the sum, as it comes
    {"ArgumentWithoutNumber", "ARG", "0xFFFFFFFF nothing"},
    {"ArgumentThatIsNoNumber", "ARGx", "0xFFFFFFFF nothing"},
    {"OtherText", "abc", "0xFFFFFFFF nothing"},
    {"TooLongForANumber", "00000000000", "0xFFFFFFFF nothing"},
};

INSTANTIATE_TEST_SUITE_P(Rows, OperandTest, testing::ValuesIn(kOperandRows), RowName<OperandRow>);

}  // namespace
