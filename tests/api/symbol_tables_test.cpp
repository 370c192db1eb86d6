// The symbol tables: what fills them, in which order, and what an index refers to.
#include <stdexcept>

#include "tests/api/meta_bytes.h"

namespace {

using Names = std::map<std::string, std::uint32_t>;

class SymbolTablesTest : public MetaTest {
 protected:
  // The cells of the ordinal-th table.
  static std::string Cells(std::size_t ordinal) {
    const auto start = g_tblTableData.begin() + static_cast<std::ptrdiff_t>(ordinal * 256);
    return std::string(start, start + 256);
  }

  // The cells of a lone table with those rows.
  std::string CellsOf(const std::string& rows) {
    CompileAnyway("[TABLE]\nNAME = T\nTYPE = 1\n" + rows);
    EXPECT_EQ(g_tblTableData.size(), 256u);
    return Cells(0);
  }
};

// 256 cells of 0, but `count` cells from `first` on, which hold `value`.
std::string CellsBut(std::size_t first, std::size_t count, char value) {
  return std::string(256, '\0').replace(first, count, count, value);
}

TEST_F(SymbolTablesTest, EveryCounterStartsAtTheBaseOfItsClass) {
  EXPECT_EQ(Hex({g_idxProperty, g_idxGlobal, g_idxValue}), "0x03000000 0x04000000 0x05000000");
  EXPECT_EQ(Hex({g_idxRepeater, g_idxDword, g_idxString}), "0x06000000 0x11000000 0x12000000");
  EXPECT_EQ(Hex({g_idxGroup, g_idxAction, g_idxTableName}), "0x18000000 0x1A000000 0x1C000000");
}

TEST_F(SymbolTablesTest, EveryTableStartsEmpty) {
  EXPECT_EQ(g_tblProperty.size() + g_tblGlobal.size() + g_tblValue.size() + g_tblRepeater.size(),
            0u);
  EXPECT_EQ(g_tblDword.size() + g_tblString.size() + g_tblTableData.size(), 0u);
  EXPECT_EQ(g_tblGroup.size() + g_tblAction.size() + g_tblTableName.size(), 0u);
}

TEST_F(SymbolTablesTest, TheSixFixedValueNamesTakeTheFirstOrdinals) {
  Compile("");
  EXPECT_EQ(g_tblValue, (Names{{"IPMI", 0x05000000},
                               {"", 0x05000001},
                               {"INIT", 0x05000002},
                               {"DEINIT", 0x05000003},
                               {"ENTRY", 0x05000004},
                               {"EXIT", 0x05000005}}));
  EXPECT_EQ(Hex({g_idxValue}), "0x05000006");
}

TEST_F(SymbolTablesTest, PropertyNamesComeFromPropertySensorDeviceAndSystemSectionsInThisOrder) {
  CompileAnyway(
      "[SYSTEM]\nP_SYS = a\n"
      "[DEVICE]\nP_DEV = a\n"
      "[SENSOR]\nP_SEN = a\n"
      "[PROPERTY]\nPROP = a\nP_WHOLE = a\n");
  EXPECT_EQ(g_tblProperty, (Names{{"PROP", 0x03000000},
                                  {"P_WHOLE", 0x03000001},
                                  {"SEN", 0x03000002},
                                  {"DEV", 0x03000003},
                                  {"SYS", 0x03000004}}));
  EXPECT_EQ(Hex({g_idxProperty}), "0x03000005");
}

TEST_F(SymbolTablesTest, TheSamePropertyNameInTwoSectionsYieldsOneIndex) {
  CompileAnyway("[SYSTEM]\nP_SITE = a\nP_NEXT = a\n[DEVICE]\nP_SITE = b\n[PROPERTY]\nSITE = c\n");
  EXPECT_EQ(g_tblProperty, (Names{{"SITE", 0x03000000}, {"NEXT", 0x03000001}}));
  EXPECT_EQ(Hex({g_idxProperty}), "0x03000002");
}

TEST_F(SymbolTablesTest, GlobalNamesLoseTheirPrefix) {
  Compile("[DEFINE]\nT0 = 0\n[GLOBAL]\nG_B = T0\nG_A = T0\n[GLOBAL]\nG_G_A = T0\n");
  EXPECT_EQ(g_tblGlobal, (Names{{"B", 0x04000000}, {"A", 0x04000001}, {"G_A", 0x04000002}}));
}

TEST_F(SymbolTablesTest, ScriptsWithoutGlobalSectionCompile) {
  Compile("[PROPERTY]\nA = x\n");
  EXPECT_EQ(g_tblGlobal, Names{});
  EXPECT_EQ(Hex({g_idxGlobal}), "0x04000000");
}

TEST_F(SymbolTablesTest, ValueNamesComeFromSensorDeviceAndActionSectionsInThisOrder) {
  CompileAnyway(
      "[DEFINE]\nT0 = 0\n"
      "[ACTION]\nVALUE_1 = T0\n"
      "[DEVICE]\nVALUE_DEV = T0\n"
      "[SENSOR]\nVALUE_SEN = T0\n");
  EXPECT_EQ(g_tblValue.at("SEN"), 0x05000006u);
  EXPECT_EQ(g_tblValue.at("DEV"), 0x05000007u);
  EXPECT_EQ(g_tblValue.at("1"), 0x05000008u);
  EXPECT_EQ(g_tblValue.size(), 9u);
}

// DEVICE sections have no VALUE_IPMI of their own: there it is a name like any other.
TEST_F(SymbolTablesTest, AValueNameThatIsFixedKeepsItsIndex) {
  CompileAnyway("[DEFINE]\nT0 = 0\n[DEVICE]\nVALUE_IPMI = T0\nVALUE_X = T0\n");
  EXPECT_EQ(g_tblValue.at("IPMI"), 0x05000000u);
  EXPECT_EQ(g_tblValue.at("X"), 0x05000006u);
}

TEST_F(SymbolTablesTest, RepeaterKeysAreTakenWhole) {
  Compile("[ACTION]\nNAME = BEEP\n[REPEATER]\nP_TICK = 1,BEEP\nTOCK = 1,BEEP\n");
  EXPECT_EQ(g_tblRepeater, (Names{{"P_TICK", 0x06000000}, {"TOCK", 0x06000001}}));
}

TEST_F(SymbolTablesTest, TheRootGroupComesBeforeTheGroupsOfTheScript) {
  Compile(
      "[GROUP]\nPARENT = 0\nNAME = B\nCHILDGROUP = 0\n"
      "[GROUP]\nPARENT = B\nNAME = A\nCHILDGROUP = 0\n");
  EXPECT_EQ(g_tblGroup, (Names{{"0", 0x18000000}, {"B", 0x18000001}, {"A", 0x18000002}}));
}

TEST_F(SymbolTablesTest, AGroupNamedLikeTheRootSharesItsIndex) {
  Compile("[GROUP]\nPARENT = 0\nNAME = 0\nCHILDGROUP = 0\n");
  EXPECT_EQ(g_tblGroup, (Names{{"0", 0x18000000}}));
}

TEST_F(SymbolTablesTest, ActionNamesAreTakenInOrder) {
  Compile("[ACTION]\nNAME = ON\n[ACTION]\nNAME = OFF\n");
  EXPECT_EQ(g_tblAction, (Names{{"ON", 0x1A000000}, {"OFF", 0x1A000001}}));
}

TEST_F(SymbolTablesTest, SectionsWithoutNameAddNothing) {
  CompileAnyway("[GROUP]\nPARENT = 0\n[ACTION]\nARGNUMBER = 0\n[TABLE]\nTYPE = 1\n5 = 1\n");
  EXPECT_EQ(g_tblGroup, (Names{{"0", 0x18000000}}));
  EXPECT_EQ(g_tblAction, Names{});
  EXPECT_EQ(g_tblTableName, Names{});
  EXPECT_TRUE(g_tblTableData.empty());
}

TEST_F(SymbolTablesTest, TwoTablesOfOneNameShareItsIndexAndHaveTheirCellsEach) {
  CompileAnyway("[TABLE]\nNAME = T\nTYPE = 1\n0 = 1\n[TABLE]\nNAME = T\nTYPE = 1\n0 = 2\n");
  EXPECT_EQ(g_tblTableName, (Names{{"T", 0x1C000000}}));
  EXPECT_EQ(g_tblTableData.size(), 512u);
  EXPECT_EQ(Cells(1), CellsBut(0, 1, 2));
}

TEST_F(SymbolTablesTest, ATableWithoutRowsHas256Zeros) {
  EXPECT_EQ(HexDump(CellsOf("")), HexDump(std::string(256, '\0')));
}

TEST_F(SymbolTablesTest, ARangeSetsItsCellsFromLowToHighInclusive) {
  EXPECT_EQ(HexDump(CellsOf("0x10.0x1F = 7\n")), HexDump(CellsBut(16, 16, 7)));
}

TEST_F(SymbolTablesTest, ASingleKeySetsOneCell) {
  EXPECT_EQ(HexDump(CellsOf("255 = 0x7F\n")), HexDump(CellsBut(255, 1, 0x7F)));
}

TEST_F(SymbolTablesTest, ALaterRowOverwritesAnEarlierOne) {
  EXPECT_EQ(HexDump(CellsOf("5.7 = 3\n0.255 = 1\n6 = 2\n")),
            HexDump(std::string(256, 1).replace(6, 1, 1, 2)));
}

TEST_F(SymbolTablesTest, ACellTakesTheLowByteOfTheNumber) {
  EXPECT_EQ(HexDump(CellsOf("1 = 0x1234\n")), HexDump(CellsBut(1, 1, 0x34)));
}

// Cells are numbers; the words that a script defines do not count here.
TEST_F(SymbolTablesTest, ACellThatIsADefinedWordIsZero) {
  Compile("[DEFINE]\nFAST = 9\n[TABLE]\nNAME = T\nTYPE = 1\n1.1 = 5\n1 = FAST\n2 = 12abc\n");
  EXPECT_EQ(HexDump(Cells(0)), HexDump(CellsBut(2, 1, 12)));
}

TEST_F(SymbolTablesTest, CellsThatNoRowSetsKeepTheValueOfTheTableBefore) {
  Compile("[TABLE]\nNAME = A\nTYPE = 1\n0.9 = 1\n[TABLE]\nNAME = B\nTYPE = 1\n3 = 2\n");
  EXPECT_EQ(HexDump(Cells(0)), HexDump(CellsBut(0, 10, 1)));
  EXPECT_EQ(HexDump(Cells(1)), HexDump(CellsBut(0, 10, 1).replace(3, 1, 1, 2)));
}

// The checks leave such a row without a value, and an empty text is no number.
TEST_F(SymbolTablesTest, ARowBeyondTheTableRaisesTheNumberErrorAndSetsNothing) {
  for (const char* row : {"256 = 2\n", "250.0xFFFFFFFF = 1\n", "9.3 = 4\n"}) {
    SCOPED_TRACE(row);
    Check(std::string("[TABLE]\nNAME = T\nTYPE = 1\n") + row, 0);
    EXPECT_THROW(gccOutput(Path("board.meta")), std::out_of_range);
    gccCompEnd();
  }
}

TEST_F(SymbolTablesTest, NumbersAndStringsAreInternedOnce) {
  Compile(
      "[TABLE]\nNAME = A\nTYPE = 0x10\n[PROPERTY]\nX = A\nY = B\n[TABLE]\nNAME = B\nTYPE = 16\n");
  EXPECT_EQ(g_tblDword, (std::map<std::uint32_t, std::uint32_t>{{16, 0x11000000}}));
  EXPECT_EQ(g_tblString, (Names{{"A", 0x12000000}, {"B", 0x12000001}}));
  EXPECT_EQ(Hex({g_idxDword, g_idxString}), "0x11000001 0x12000002");
}

TEST_F(SymbolTablesTest, ASecondCompileRunKeepsTheIndicesAndGoesOn) {
  Compile("[PROPERTY]\nA = x\n[TABLE]\nNAME = T\nTYPE = 1\n0 = 1\n");
  gccCompEnd();
  Compile("[PROPERTY]\nB = x\nA = y\n");
  EXPECT_EQ(g_tblProperty, (Names{{"A", 0x03000000}, {"B", 0x03000001}}));
  EXPECT_EQ(g_tblString, (Names{{"x", 0x12000000}, {"T", 0x12000001}, {"y", 0x12000002}}));
  EXPECT_EQ(g_tblTableName, (Names{{"T", 0x1C000000}}));
}

TEST_F(SymbolTablesTest, TheCellsAreThoseOfTheLastCompileRun) {
  Compile("[TABLE]\nNAME = T\nTYPE = 1\n0 = 1\n");
  gccCompEnd();
  Compile("[PROPERTY]\nA = x\n");
  EXPECT_TRUE(g_tblTableData.empty());
}

TEST_F(SymbolTablesTest, ACompileRunAfterALoadGoesOnFromTheFile) {
  Compile("[PROPERTY]\nOLD1 = x\nOLD2 = x\nOLD3 = x\n");
  gccCompEnd();
  ASSERT_EQ(Load(MetaBytes().Strings(0x03000000, {"FILE"}).str()), 1u);
  Compile("[PROPERTY]\nOLD2 = x\n");
  EXPECT_EQ(g_tblProperty, (Names{{"FILE", 0x03000000}, {"OLD2", 0x03000001}}));
}

// Entry names of no section that is visited for them: added without an index until one is.
TEST_F(SymbolTablesTest, AKeyWithoutIndexGetsOneWhenItIsInterned) {
  CompileAnyway("[PELMGROUP]\nP_LATE = x\n");
  EXPECT_EQ(g_tblProperty, (Names{{"LATE", 0}}));
  gccCompEnd();
  CompileAnyway("[PROPERTY]\nA = x\nLATE = x\n");
  EXPECT_EQ(g_tblProperty, (Names{{"A", 0x03000000}, {"LATE", 0x03000001}}));
}

TEST_F(SymbolTablesTest, AKeyShorterThanItsPrefixEndsThePassWithTheRangeError) {
  for (const char* script : {"[SYSTEM]\nX = 1\n", "[GLOBAL]\nX = 1\n", "[SENSOR]\nX = 1\n",
                             "[DEVICE]\nVALUE = 1\n", "[ACTION]\nX = 1\n"}) {
    SCOPED_TRACE(script);
    Check(script, 0);
    EXPECT_THROW(gccOutput(Path("board.meta")), std::out_of_range);
    gccCompEnd();
  }
}

// The tables are filled one after the other, in the order property, global, value, repeater, group,
// action, table.
TEST_F(SymbolTablesTest, AKeyThatEndsThePassLeavesLaterTablesAsTheyWere) {
  Check("[PROPERTY]\nA = 1\n[GLOBAL]\nX = 1\n[GROUP]\nNAME = G\n", 0);
  EXPECT_THROW(gccOutput(Path("board.meta")), std::out_of_range);
  EXPECT_EQ(g_tblProperty, (Names{{"A", 0x03000000}}));
  EXPECT_EQ(g_tblValue, Names{});
  EXPECT_EQ(g_tblGroup, Names{});
}

TEST_F(SymbolTablesTest, ARowThatEndsThePassLeavesTheNamesOfLaterTablesOut) {
  Check("[TABLE]\nNAME = A\nTYPE = 1\n0.9 = 0x\n[TABLE]\nNAME = B\nTYPE = 1\n1 = 1\n", 1);
  EXPECT_THROW(gccOutput(Path("board.meta")), std::out_of_range);
  gccCompEnd();
  EXPECT_EQ(g_tblTableName, (Names{{"A", 0x1C000000}}));
  Compile("[TABLE]\nNAME = C\nTYPE = 1\n1 = 1\n");
  EXPECT_EQ(g_tblTableName, (Names{{"A", 0x1C000000}, {"C", 0x1C000001}}));
}

TEST_F(SymbolTablesTest, AnIndexStandsForTheKeyOfItsTable) {
  const Words indices = {0x03000001, 0x04000000, 0x05000000, 0x06000000, 0x11000001,
                         0x12000000, 0x18000000, 0x1A000000, 0x1C000000};
  ASSERT_EQ(Load(MetaBytes()
                     .Section(0x01000002, {{0x03000000, indices}})
                     .Strings(0x03000000, {"p0", "p1"})
                     .Strings(0x04000000, {"g"})
                     .Strings(0x05000000, {"v"})
                     .Strings(0x06000000, {"r"})
                     .Numbers({7, 8})
                     .Strings(0x12000000, {"s"})
                     .Strings(0x18000000, {"0"})
                     .Strings(0x1A000000, {"a"})
                     .Strings(0x1C000000, {"t"})
                     .str()),
            1u);
  const GCENTRY entry = gcGetEntryByIndex(gcGetSectByIndex(0x01000002, 0), 0, nullptr);
  const std::vector<std::string> expected = {
      "0x03000001 string p1", "0x04000000 string g", "0x05000000 string v",
      "0x06000000 string r",  "0x11000001 number 8", "0x12000000 string s",
      "0x18000000 string 0",  "0x1A000000 string a", "0x1C000000 string t"};
  for (std::uint32_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(Show(gcGetValueByIndex(entry, i)), expected[i]);
    EXPECT_EQ(gcGetLastError(), 0u);
  }
}

TEST_F(SymbolTablesTest, SmallNumbersValueTypesAndOperatorsStandForTheirLow24Bits) {
  ASSERT_EQ(Load(MetaBytes()
                     .Section(0x01000002, {{0, {0x1D000003, 0x1E00000A, 0x1F000065, 0x1DFFFFFF}}})
                     .str()),
            1u);
  const GCENTRY entry = gcGetEntryByIndex(gcGetSectByIndex(0x01000002, 0), 0, nullptr);
  EXPECT_EQ(Show(gcGetValueByIndex(entry, 0)), "0x1D000003 number 3");
  EXPECT_EQ(Show(gcGetValueByIndex(entry, 1)), "0x1E00000A number 10");
  EXPECT_EQ(Show(gcGetValueByIndex(entry, 2)), "0x1F000065 number 101");
  EXPECT_EQ(Show(gcGetValueByIndex(entry, 3)), "0x1DFFFFFF number 16777215");
}

TEST_F(SymbolTablesTest, OtherClassesAndMissingKeysStandForNothing) {
  const Words indices = {0x02000015, 0x1B000000, 0x01000002, 0x00000000, 0xFFFFFFFF, 0x20000001,
                         0x03000001, 0x11000009, 0x12000000, 0x18000001, 0x11000000};
  ASSERT_EQ(Load(MetaBytes()
                     .Section(0x01000002, {{0, indices}})
                     .Strings(0x03000000, {"only"})
                     .Numbers({0xFFFFFFFF, 1})  // that number looks like one not found
                     .Strings(0x18000000, {"0"})
                     .str()),
            1u);
  const GCENTRY entry = gcGetEntryByIndex(gcGetSectByIndex(0x01000002, 0), 0, nullptr);
  for (std::uint32_t i = 0; i < indices.size(); ++i) {
    EXPECT_EQ(Show(gcGetValueByIndex(entry, i)), Hex({indices[i]}) + " nothing");
    EXPECT_EQ(gcGetLastError(), 10u);
  }
}

}  // namespace
