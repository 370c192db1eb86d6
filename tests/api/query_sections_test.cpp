// Loading and releasing, finding sections and groups, and the last-error code of every outcome.
#include "tests/api/meta_bytes.h"

namespace {

// Class bases of the tables that names come from.
constexpr std::uint32_t kProperty = 0x03000000, kString = 0x12000000, kGroup = 0x18000000;

// Compiled identifiers.
constexpr std::uint32_t kMorvrux = 0x01000001, kPropertySection = 0x01000002, kSystem = 0x01000003,
                        kGroupSection = 0x01000004, kSensor = 0x01000005, kDevice = 0x01000006,
                        kAction = 0x01000007, kTable = 0x01000008, kPelmGroup = 0x01000009,
                        kGlobal = 0x0100000A, kRepeater = 0x0100000B;
constexpr std::uint32_t kId = 0x02000008, kName = 0x02000015;

// A code that no function stores: seen afterwards when one forgot to.
constexpr std::uint32_t kUntouched = 99;

class QuerySectionsTest : public MetaTest {
 protected:
  void SetUp() override {
    MetaTest::SetUp();
    gcSetLastError(kUntouched);
  }

  // Loads a file and forgets the code of doing so.
  void Given(const std::string& bytes) {
    ASSERT_EQ(Load(bytes), 1u);
    gcSetLastError(kUntouched);
  }
  void GivenScript(const std::string& text) {
    LoadScript(text);
    gcSetLastError(kUntouched);
  }
};

#define EXPECT_FOUND(query, section) \
  EXPECT_EQ(query, section);         \
  EXPECT_EQ(gcGetLastError(), 0u)

#define EXPECT_NONE(query, code) \
  EXPECT_EQ(query, nullptr);     \
  EXPECT_EQ(gcGetLastError(), code)

TEST_F(QuerySectionsTest, TheLastErrorIsWhatWasStoredLast) {
  gcSetLastError(0xFFFFFFFF);
  EXPECT_EQ(gcGetLastError(), 0xFFFFFFFFu);
  EXPECT_EQ(g_dwLastError, 0xFFFFFFFFu);
  gcSetLastError(0);
  EXPECT_EQ(gcGetLastError(), 0u);
}

TEST_F(QuerySectionsTest, BeforeAnyLoadThereAreNoSections) {
  EXPECT_NONE(gcGetSectByIndex(kSensor, 0), 1u);
  EXPECT_NONE(gcGetSectByID(kSensor, 1), 1u);
  EXPECT_NONE(gcGetSectByName(kSensor, "A"), 1u);
  EXPECT_EQ(gcGetGroupIndex("A"), 0xFFFFFFFFu);
  EXPECT_EQ(gcGetLastError(), 1u);
  EXPECT_EQ(gcGetGroupIndex("0"), 0u);
  EXPECT_EQ(gcGetLastError(), 0u);
  EXPECT_EQ(gcGetSectCount(kSensor), 0u);
  EXPECT_EQ(gcGetLastError(), 0u);
}

TEST_F(QuerySectionsTest, LoadingStoresZeroOr13) {
  EXPECT_EQ(gcInit(Path("none.meta")), 0u);
  EXPECT_EQ(gcGetLastError(), 13u);
  EXPECT_EQ(Load("no meta file"), 0u);
  EXPECT_EQ(gcGetLastError(), 13u);
  EXPECT_EQ(Load(MetaBytes().str()), 1u);
  EXPECT_EQ(gcGetLastError(), 0u);
}

TEST_F(QuerySectionsTest, ReleasingTakesTheSectionsAndLeavesTheTablesAndTheCode) {
  Given(MetaBytes().Section(kSensor, {}).Strings(kProperty, {"A"}).str());
  EXPECT_EQ(gcUnInit(), 1u);
  EXPECT_EQ(gcGetLastError(), kUntouched);
  EXPECT_EQ(gcGetSectCount(kSensor), 0u);
  EXPECT_EQ(g_tblProperty.size(), 1u);
  EXPECT_EQ(gcUnInit(), 1u);
}

TEST_F(QuerySectionsTest, SectionsAreCountedByKind) {
  Given(MetaBytes().Section(kSensor, {}).Section(kDevice, {}).Section(kSensor, {}).str());
  EXPECT_EQ(gcGetSectCount(kSensor), 2u);
  EXPECT_EQ(gcGetLastError(), 0u);
  EXPECT_EQ(gcGetSectCount(kDevice), 1u);
  EXPECT_EQ(gcGetSectCount(kAction), 0u);
  EXPECT_EQ(gcGetSectCount(0x20000005), 0u);
  EXPECT_EQ(gcGetLastError(), 0u);
}

TEST_F(QuerySectionsTest, SectionsOfAKindAreNumberedInFileOrder) {
  Given(MetaBytes()
            .Section(kSensor, {{1, {}}})
            .Section(kDevice, {{2, {}}})
            .Section(kSensor, {{3, {}}})
            .str());
  EXPECT_EQ(Hex(EntryIds(gcGetSectByIndex(kSensor, 0))), "0x00000001");
  EXPECT_EQ(Hex(EntryIds(gcGetSectByIndex(kSensor, 1))), "0x00000003");
  EXPECT_EQ(Hex(EntryIds(gcGetSectByIndex(kDevice, 0))), "0x00000002");
  EXPECT_FOUND(gcGetSectByIndex(kDevice, 0), gcGetSectByIndex(kDevice, 0));
}

TEST_F(QuerySectionsTest, AnOrdinalBeyondTheKindIs4AndAKindWithoutSections1) {
  Given(MetaBytes().Section(kSensor, {}).Section(kDevice, {}).str());
  EXPECT_NONE(gcGetSectByIndex(kSensor, 1), 4u);
  EXPECT_NONE(gcGetSectByIndex(kSensor, 0xFFFFFFFF), 4u);
  EXPECT_NONE(gcGetSectByIndex(kAction, 0), 1u);
}

TEST_F(QuerySectionsTest, ASectionIsFoundByItsId) {
  GivenScript(
      "[DEFINE]\nWORD = 300\n[DEVICE]\nID = 0x10\n[DEVICE]\nID = 17\n[DEVICE]\nID = WORD\n"
      "[SENSOR]\nID = 18\n");
  EXPECT_FOUND(gcGetSectByID(kDevice, 16), gcGetSectByIndex(kDevice, 0));
  EXPECT_FOUND(gcGetSectByID(kDevice, 17), gcGetSectByIndex(kDevice, 1));
  EXPECT_FOUND(gcGetSectByID(kDevice, 300), gcGetSectByIndex(kDevice, 2));
  EXPECT_FOUND(gcGetSectByID(kSensor, 18), gcGetSectByIndex(kSensor, 0));
}

TEST_F(QuerySectionsTest, OfSeveralSectionsWithAnIdTheFirstIsFound) {
  Given(MetaBytes()
            .Section(kDevice, {{kId, {0x11000001}}})
            .Section(kDevice, {{kId, {0x11000001, 0x11000000}}})
            .Section(kDevice, {{kId, {0x11000002}}, {kId, {0x11000000}}})
            .Numbers({5, 6, 7})
            .str());
  EXPECT_FOUND(gcGetSectByID(kDevice, 6), gcGetSectByIndex(kDevice, 0));
  // Only the first value counts, but every ID entry.
  EXPECT_FOUND(gcGetSectByID(kDevice, 5), gcGetSectByIndex(kDevice, 2));
}

TEST_F(QuerySectionsTest, AnIdThatNoneHasIs5AndNoIdsAtAll6) {
  GivenScript("[DEVICE]\nNAME = D\nID = 16\n[SENSOR]\nNAME = S\nID = abc\n[ACTION]\nNAME = A\n");
  EXPECT_NONE(gcGetSectByID(kDevice, 17), 5u);
  EXPECT_NONE(gcGetSectByID(kSensor, 0), 6u);  // its ID has no value
  EXPECT_NONE(gcGetSectByID(kAction, 16), 6u);
  EXPECT_NONE(gcGetSectByID(kTable, 16), 1u);
}

TEST_F(QuerySectionsTest, AnIdThatIsNoNumberCountsAsCompared) {
  Given(MetaBytes()
            .Section(kDevice, {{kId, {kString}}})
            .Section(kSensor, {{kId, {0x11000000}}})
            .Strings(kString, {"5"})
            .str());
  EXPECT_NONE(gcGetSectByID(kDevice, 5), 5u);
  EXPECT_NONE(gcGetSectByID(kSensor, 0), 5u);  // its index refers to nothing
}

TEST_F(QuerySectionsTest, ASectionIsFoundByItsName) {
  GivenScript(
      "[DEVICE]\nNAME = A\n[DEVICE]\nNAME = B\n[SENSOR]\nNAME = B\n[GROUP]\nNAME = B\n"
      "[ACTION]\nNAME = B\n[TABLE]\nNAME = B\n[PELMGROUP]\nNAME = B\n");
  EXPECT_FOUND(gcGetSectByName(kDevice, "B"), gcGetSectByIndex(kDevice, 1));
  for (const std::uint32_t kind : {kSensor, kGroupSection, kAction, kTable, kPelmGroup}) {
    EXPECT_FOUND(gcGetSectByName(kind, "B"), gcGetSectByIndex(kind, 0));
    EXPECT_NONE(gcGetSectByName(kind, "A"), 7u);
  }
}

TEST_F(QuerySectionsTest, NamesAreComparedByteByByte) {
  GivenScript(
      "[DEVICE]\nNAME = \"L\xC3\xBC"
      "fter 1, links\"\n");
  EXPECT_FOUND(gcGetSectByName(kDevice,
                               "L\xC3\xBC"
                               "fter 1, links"),
               gcGetSectByIndex(kDevice, 0));
  EXPECT_NONE(gcGetSectByName(kDevice,
                              "l\xC3\xBC"
                              "fter 1, links"),
              7u);
  EXPECT_NONE(gcGetSectByName(kDevice,
                              "L\xC3\xBC"
                              "fter 1"),
              7u);
  EXPECT_NONE(gcGetSectByName(kDevice, ""), 7u);
}

TEST_F(QuerySectionsTest, PropertyGlobalAndRepeaterSectionsAreFoundByTheNamesOfTheirEntries) {
  GivenScript(
      "[DEFINE]\nT0 = 0\n[ACTION]\nNAME = BEEP\n"
      "[PROPERTY]\nA = x\n[PROPERTY]\nB = x\nC = x\n"
      "[GLOBAL]\nG_A = T0\n[GLOBAL]\nG_B = T0\nG_C = T0\n"
      "[REPEATER]\nA = 1,BEEP\n[REPEATER]\nB = 1,BEEP\nC = 1,BEEP\n");
  for (const std::uint32_t kind : {kPropertySection, kGlobal, kRepeater}) {
    EXPECT_FOUND(gcGetSectByName(kind, "A"), gcGetSectByIndex(kind, 0));
    EXPECT_FOUND(gcGetSectByName(kind, "B"), gcGetSectByIndex(kind, 1));
    EXPECT_FOUND(gcGetSectByName(kind, "C"), gcGetSectByIndex(kind, 1));
    EXPECT_NONE(gcGetSectByName(kind, "G_A"), 7u);
  }
}

TEST_F(QuerySectionsTest, OtherSectionsAreNotFoundByTheNamesOfTheirEntries) {
  GivenScript("[DEFINE]\nT0 = 0\n[SYSTEM]\nP_A = x\n[DEVICE]\nNAME = D\nP_A = x\nVALUE_B = T0\n");
  EXPECT_NONE(gcGetSectByName(kSystem, "A"), 8u);
  EXPECT_NONE(gcGetSectByName(kDevice, "A"), 7u);
  EXPECT_NONE(gcGetSectByName(kDevice, "B"), 7u);
}

// A NAME with a value offers that; without one it is an entry like any other.
TEST_F(QuerySectionsTest, ANameEntryOfAPropertySectionOffersItsValue) {
  Given(MetaBytes()
            .Section(kPropertySection, {{kName, {}}})
            .Section(kPropertySection, {{kName, {kString}}, {kProperty, {kString}}})
            .Strings(kProperty, {"A"})
            .Strings(kString, {"B"})
            .str());
  EXPECT_FOUND(gcGetSectByName(kPropertySection, "B"), gcGetSectByIndex(kPropertySection, 1));
  EXPECT_FOUND(gcGetSectByName(kPropertySection, "A"), gcGetSectByIndex(kPropertySection, 1));
  EXPECT_NONE(gcGetSectByName(kPropertySection, "C"), 7u);
}

TEST_F(QuerySectionsTest, OnlyTheFirstValueOfANameCountsButEveryNameEntry) {
  Given(MetaBytes()
            .Section(kDevice, {{kName, {kString, kString + 1}}})
            .Section(kDevice, {{kName, {}}, {kName, {kString + 2}}, {kName, {kString + 1}}})
            .Strings(kString, {"A", "B", "C"})
            .str());
  EXPECT_FOUND(gcGetSectByName(kDevice, "B"), gcGetSectByIndex(kDevice, 1));
}

TEST_F(QuerySectionsTest, KindsWithoutNamesAre8) {
  Given(MetaBytes()
            .Section(kMorvrux, {{0x02000001, {kString}}})
            .Section(kPropertySection, {})
            .Section(kDevice, {{kName, {}}})
            .Section(kSensor, {{kName, {kString + 5}}})      // refers to nothing
            .Section(kTable, {{kName, {0x11000000}}})        // refers to a number
            .Section(kGlobal, {{0x04000000, {0x1E000000}}})  // its own name is missing
            .Strings(kString, {"A"})
            .Numbers({1})
            .str());
  for (const std::uint32_t kind : {kMorvrux, kPropertySection, kDevice, kSensor, kTable, kGlobal}) {
    SCOPED_TRACE(kind);
    EXPECT_NONE(gcGetSectByName(kind, "A"), 8u);
  }
  EXPECT_NONE(gcGetSectByName(kAction, "A"), 1u);
}

TEST_F(QuerySectionsTest, ANullNameIsTheEmptyName) {
  GivenScript("[DEVICE]\nNAME = A\n[DEVICE]\nNAME = \"\"\n");
  EXPECT_FOUND(gcGetSectByName(kDevice, nullptr), gcGetSectByIndex(kDevice, 1));
  EXPECT_NONE(gcGetSectByName(kSensor, nullptr), 1u);
}

// The tables are exported: a host that changes them gets the answers of what they are then.
TEST_F(QuerySectionsTest, TablesThatAHostChangedAreSearchedAnew) {
  GivenScript(
      "[GROUP]\nPARENT = 0\nNAME = A\n[DEVICE]\nNAME = THE_ONE_WITH_A_LONG_NAME\nID = 16\n");
  const auto device = gcGetSectByIndex(kDevice, 0);
  EXPECT_FOUND(gcGetSectByName(kGroupSection, "A"), gcGetSectByIndex(kGroupSection, 0));
  EXPECT_FOUND(gcGetSectByName(kDevice, "THE_ONE_WITH_A_LONG_NAME"), device);
  EXPECT_FOUND(gcGetSectByID(kDevice, 16), device);
  g_tblGroup.clear();
  g_tblString.clear();
  g_tblDword.clear();
  EXPECT_NONE(gcGetSectByName(kGroupSection, "A"), 8u);
  EXPECT_NONE(gcGetSectByName(kDevice, "THE_ONE_WITH_A_LONG_NAME"), 8u);
  EXPECT_NONE(gcGetSectByName(kTable, "A"), 1u);
  EXPECT_NONE(gcGetSectByID(kDevice, 16), 5u);
  const Words name = ValuesOf(kDevice, kName);
  ASSERT_EQ(name.size(), 1u);
  g_tblString["ANOTHER_NAME_OF_THE_SAME_LENGTH"] = name[0];
  EXPECT_FOUND(gcGetSectByName(kDevice, "ANOTHER_NAME_OF_THE_SAME_LENGTH"), device);
  EXPECT_NONE(gcGetSectByName(kDevice, "THE_ONE_WITH_A_LONG_NAME"), 7u);
}

TEST_F(QuerySectionsTest, AGroupHasTheOrdinalThatItsSensorsCarry) {
  GivenScript(
      "[GROUP]\nPARENT = 0\nNAME = A\n[GROUP]\nPARENT = A\nNAME = B\n[SENSOR]\nPARENT = B\n");
  EXPECT_EQ(gcGetGroupIndex("A"), 1u);
  EXPECT_EQ(gcGetLastError(), 0u);
  EXPECT_EQ(gcGetGroupIndex("B"), 2u);
  EXPECT_EQ(Hex(ValuesOf(kSensor, 0x02000014)), "0x18000002");
}

TEST_F(QuerySectionsTest, TheRootGroupIsThereWithoutASection) {
  GivenScript("[GROUP]\nPARENT = 0\nNAME = A\n");
  EXPECT_EQ(gcGetGroupIndex("0"), 0u);
  EXPECT_EQ(gcGetLastError(), 0u);
}

TEST_F(QuerySectionsTest, AGroupSectionNamedLikeTheRootIsTheRoot) {
  GivenScript("[GROUP]\nPARENT = 0\nNAME = A\n[GROUP]\nPARENT = 0\nNAME = 0\n");
  EXPECT_EQ(gcGetGroupIndex("0"), 0u);
  EXPECT_EQ(gcGetLastError(), 0u);
}

// 7 and 8 are the codes of looking the name up.
TEST_F(QuerySectionsTest, AnUnknownGroupIs1WhateverTheNameSearchLeft) {
  Given(MetaBytes().Section(kGroupSection, {{kName, {kGroup}}}).Strings(kGroup, {"0"}).str());
  EXPECT_EQ(gcGetGroupIndex("A"), 0xFFFFFFFFu);
  EXPECT_EQ(gcGetLastError(), 1u);
  EXPECT_EQ(gcGetGroupIndex(nullptr), 0xFFFFFFFFu);
  EXPECT_EQ(gcGetLastError(), 1u);
  gcUnInit();
  Given(MetaBytes().Section(kGroupSection, {}).str());
  EXPECT_EQ(gcGetGroupIndex("A"), 0xFFFFFFFFu);
  EXPECT_EQ(gcGetLastError(), 1u);
  EXPECT_EQ(gcGetGroupIndex("0"), 0u);
  EXPECT_EQ(gcGetLastError(), 0u);
}

TEST_F(QuerySectionsTest, TheGroupIndexIsThatOfTheFirstNameWithAValue) {
  Given(MetaBytes()
            .Section(kGroupSection, {{kName, {}}, {kName, {kGroup + 7}}, {kName, {kGroup + 1}}})
            .Strings(kGroup, {"0", "A"})
            .str());
  EXPECT_EQ(gcGetGroupIndex("A"), 7u);
  EXPECT_EQ(gcGetLastError(), 0u);
}

}  // namespace
