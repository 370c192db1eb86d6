// The entries of a section and the cells of a table.
#include <array>

#include "tests/api/meta_bytes.h"

namespace {

constexpr std::uint32_t kPropertySection = 0x01000002, kSensor = 0x01000005, kDevice = 0x01000006,
                        kAction = 0x01000007, kGlobal = 0x0100000A, kRepeater = 0x0100000B;
constexpr std::uint32_t kId = 0x02000008, kName = 0x02000015;

// A code that no function stores: seen afterwards when one forgot to.
constexpr std::uint32_t kUntouched = 99;

using Cells = std::array<std::uint8_t, 256>;

class QueryEntriesTest : public MetaTest {
 protected:
  void SetUp() override {
    MetaTest::SetUp();
    gcSetLastError(kUntouched);
  }

  // The first section of that kind in a file of those bytes.
  GCSECTION Given(std::uint32_t kind, const std::string& bytes) {
    EXPECT_EQ(Load(bytes), 1u);
    const GCSECTION section = gcGetSectByIndex(kind, 0);
    gcSetLastError(kUntouched);
    return section;
  }
  GCSECTION GivenScript(std::uint32_t kind, const std::string& text) {
    LoadScript(text);
    const GCSECTION section = gcGetSectByIndex(kind, 0);
    gcSetLastError(kUntouched);
    return section;
  }
};

#define EXPECT_NONE(query, code) \
  EXPECT_EQ(query, nullptr);     \
  EXPECT_EQ(gcGetLastError(), code)

TEST_F(QueryEntriesTest, ANullSectionIs1) {
  EXPECT_EQ(gcGetEntryCount(nullptr), 0xFFFFFFFFu);
  EXPECT_EQ(gcGetLastError(), 1u);
  gcSetLastError(kUntouched);
  EXPECT_NONE(gcGetEntryByType(nullptr, kName), 1u);
  gcSetLastError(kUntouched);
  EXPECT_NONE(gcGetEntryByIndex(nullptr, 0, nullptr), 1u);
  gcSetLastError(kUntouched);
  EXPECT_NONE(gcGetEntryByName(nullptr, "A", nullptr), 1u);
}

TEST_F(QueryEntriesTest, EntriesAreCounted) {
  const GCSECTION device = GivenScript(kDevice, "[DEVICE]\nNAME = D\nID = 1\nP_A = x\n");
  EXPECT_EQ(gcGetEntryCount(device), 3u);
  EXPECT_EQ(gcGetLastError(), 0u);
}

TEST_F(QueryEntriesTest, AnEmptySectionHasNoEntries) {
  const GCSECTION device = GivenScript(kDevice, "[DEVICE]\n");
  EXPECT_EQ(gcGetEntryCount(device), 0u);
  EXPECT_EQ(gcGetLastError(), 0u);
}

TEST_F(QueryEntriesTest, AnEntryIsFoundByItsType) {
  const GCSECTION device = GivenScript(kDevice, "[DEVICE]\nNAME = D\nID = 1\nP_A = x\n");
  EXPECT_EQ(gcGetEntryByType(device, kId), gcGetEntryByIndex(device, 1, nullptr));
  EXPECT_EQ(gcGetEntryByType(device, 0x03000000), gcGetEntryByIndex(device, 2, nullptr));
  EXPECT_EQ(gcGetLastError(), 0u);
}

TEST_F(QueryEntriesTest, OfSeveralEntriesOfATypeTheFirstIsFound) {
  const GCSECTION device =
      Given(kDevice, MetaBytes().Section(kDevice, {{kId, {1}}, {kName, {2}}, {kName, {3}}}).str());
  EXPECT_EQ(Hex(ValuesOf(gcGetEntryByType(device, kName))), "0x00000002");
}

TEST_F(QueryEntriesTest, ATypeThatNoEntryHasIs2) {
  const GCSECTION device = GivenScript(kDevice, "[DEVICE]\nNAME = D\n[SENSOR]\n");
  EXPECT_NONE(gcGetEntryByType(device, kId), 2u);
  const GCSECTION sensor = gcGetSectByIndex(kSensor, 0);
  EXPECT_NONE(gcGetEntryByType(sensor, kId), 2u);  // without entries
}

TEST_F(QueryEntriesTest, AnEntryIsFoundByItsOrdinalAndTellsItsType) {
  const GCSECTION device = GivenScript(kDevice, "[DEVICE]\nNAME = D\nID = 1\nP_A = x\n");
  const Words expected = {kName, kId, 0x03000000};
  for (std::uint32_t i = 0; i < expected.size(); ++i) {
    std::uint32_t identifier = 0;
    EXPECT_NE(gcGetEntryByIndex(device, i, &identifier), nullptr);
    EXPECT_EQ(gcGetLastError(), 0u);
    EXPECT_EQ(identifier, expected[i]);
  }
}

TEST_F(QueryEntriesTest, WhoeverDoesNotWantTheTypePassesNull) {
  const GCSECTION device = GivenScript(kDevice, "[DEVICE]\nNAME = D\nP_A = x\n");
  EXPECT_NE(gcGetEntryByIndex(device, 0, nullptr), nullptr);
  EXPECT_NE(gcGetEntryByName(device, "A", nullptr), nullptr);
}

TEST_F(QueryEntriesTest, AnOrdinalBeyondTheEntriesIs4) {
  const GCSECTION device = GivenScript(kDevice, "[DEVICE]\nNAME = D\n");
  std::uint32_t identifier = 0;
  EXPECT_NONE(gcGetEntryByIndex(device, 1, &identifier), 4u);
  EXPECT_NONE(gcGetEntryByIndex(device, 0xFFFFFFFF, &identifier), 4u);
}

TEST_F(QueryEntriesTest, AnyOrdinalOfAnEmptySectionIs4) {
  const GCSECTION device = GivenScript(kDevice, "[DEVICE]\n");
  std::uint32_t identifier = 0;
  EXPECT_NONE(gcGetEntryByIndex(device, 0, &identifier), 4u);
}

TEST_F(QueryEntriesTest, AnEntryIsFoundByItsName) {
  GivenScript(kDevice,
              "[DEFINE]\nT0 = 0\n"
              "[DEVICE]\nNAME = D\nP_A = x\nVALUE_B = T0\n"
              "[ACTION]\nNAME = BEEP\nVALUE_IPMI = T0\nVALUE = T0\nVALUE_1 = T0\n"
              "[PROPERTY]\nA = x\nP_A = x\n[GLOBAL]\nG_A = T0\n[REPEATER]\nA = 1,BEEP\n");
  const struct {
    std::uint32_t kind;
    const char* name;
    std::uint32_t identifier;
  } rows[] = {{kDevice, "A", 0x03000000},
              {kDevice, "B", 0x05000006},
              {kAction, "IPMI", 0x05000000},
              {kAction, "", 0x05000001},
              {kAction, "1", 0x05000007},
              {kPropertySection, "A", 0x03000000},
              {kPropertySection, "P_A", 0x03000001},
              {kGlobal, "A", 0x04000000},
              {kRepeater, "A", 0x06000000}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const GCSECTION section = gcGetSectByIndex(row.kind, 0);
    std::uint32_t identifier = 0;
    const GCENTRY entry = gcGetEntryByName(section, row.name, &identifier);
    EXPECT_EQ(gcGetLastError(), 0u);
    EXPECT_EQ(Hex({identifier}), Hex({row.identifier}));
    EXPECT_EQ(entry, gcGetEntryByType(section, row.identifier));
  }
}

TEST_F(QueryEntriesTest, OfSeveralEntriesOfANameTheFirstIsFound) {
  const GCSECTION device = Given(
      kDevice, MetaBytes()
                   .Section(kDevice, {{0x05000000, {1}}, {0x03000000, {2}}, {0x05000000, {3}}})
                   .Strings(0x03000000, {"A"})
                   .Strings(0x05000000, {"A"})
                   .str());
  std::uint32_t identifier = 0;
  EXPECT_EQ(gcGetEntryByName(device, "A", &identifier), gcGetEntryByIndex(device, 0, nullptr));
  EXPECT_EQ(identifier, 0x05000000u);
}

// Fixed keywords are no names, and neither is a NAME's own text.
TEST_F(QueryEntriesTest, ANameThatNoEntryHasIs7) {
  const GCSECTION device = GivenScript(kDevice, "[DEVICE]\nNAME = D\nP_A = x\n");
  for (const char* name : {"NAME", "D", "P_A", "a", "AA", ""}) {
    SCOPED_TRACE(name);
    gcSetLastError(kUntouched);
    EXPECT_NONE(gcGetEntryByName(device, name, nullptr), 7u);
  }
}

TEST_F(QueryEntriesTest, AnyNameInAnEmptySectionIs2) {
  const GCSECTION device = GivenScript(kDevice, "[DEVICE]\n");
  EXPECT_NONE(gcGetEntryByName(device, "A", nullptr), 2u);
}

TEST_F(QueryEntriesTest, ANullNameIsTheEmptyName) {
  const GCSECTION action =
      GivenScript(kAction, "[DEFINE]\nT0 = 0\n[ACTION]\nNAME = A\nVALUE = T0\n");
  std::uint32_t identifier = 0;
  EXPECT_NE(gcGetEntryByName(action, nullptr, &identifier), nullptr);
  EXPECT_EQ(identifier, 0x05000001u);
}

TEST_F(QueryEntriesTest, ATableGivesIts256Cells) {
  LoadScript("[TABLE]\nNAME = A\nTYPE = 1\n0.255 = 1\n[TABLE]\nNAME = B\nTYPE = 1\n7 = 2\n");
  Cells first;
  Cells second;
  gcSetLastError(kUntouched);
  EXPECT_EQ(gcGetTableData(0, first.data()), 1u);
  EXPECT_EQ(gcGetLastError(), 0u);
  EXPECT_EQ(gcGetTableData(1, second.data()), 1u);
  Cells expected;
  expected.fill(1);
  EXPECT_EQ(first, expected);
  expected[7] = 2;
  EXPECT_EQ(second, expected);
}

TEST_F(QueryEntriesTest, ATableBeyondTheLastIs4AndLeavesTheBuffer) {
  LoadScript("[TABLE]\nNAME = A\nTYPE = 1\n0.255 = 1\n");
  Cells untouched;
  untouched.fill(0xAA);
  // The last three times 256 has no room in 32 bits.
  for (const std::uint32_t ordinal : {1u, 2u, 0x01000000u, 0x80000000u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(ordinal);
    Cells cells = untouched;
    gcSetLastError(kUntouched);
    EXPECT_EQ(gcGetTableData(ordinal, cells.data()), 0u);
    EXPECT_EQ(gcGetLastError(), 4u);
    EXPECT_EQ(cells, untouched);
  }
}

TEST_F(QueryEntriesTest, WithoutTablesThereAreNoCells) {
  Cells cells;
  EXPECT_EQ(gcGetTableData(0, cells.data()), 0u);
  EXPECT_EQ(gcGetLastError(), 4u);
}

TEST_F(QueryEntriesTest, ATableThatIsCutShortGivesNothing) {
  Given(kDevice, MetaBytes().Block(0x1B000000, std::string(511, 1)).str());
  Cells cells;
  EXPECT_EQ(gcGetTableData(0, cells.data()), 1u);
  EXPECT_EQ(gcGetTableData(1, cells.data()), 0u);
  EXPECT_EQ(gcGetLastError(), 4u);
}

TEST_F(QueryEntriesTest, TheCellsStayAfterReleasing) {
  LoadScript("[TABLE]\nNAME = A\nTYPE = 1\n0.255 = 1\n");
  gcUnInit();
  Cells cells;
  EXPECT_EQ(gcGetTableData(0, cells.data()), 1u);
}

}  // namespace
