// Finding sections and entries.
#include "frontend/section.h"
#include "tests/unit/model_test.h"

using namespace ruxcomp::core;

namespace {

using LookupTest = ModelTest;

constexpr std::uint32_t kCount = 0xFFFFFFFF;
constexpr std::uint32_t kG = 0x10080001;
constexpr std::uint32_t kName = 0x10020015;
constexpr std::uint32_t kVersion = 0x10020001;

CRUXSection& WithThreeGlobals(CRUXSection& section) {
  for (const char* key : {"G_A", "G_B", "G_C"}) section.SetEntry("board.rux", key, "VT", 2);
  return section;
}

TEST_F(LookupTest, FindEntryNumbersEntriesWithFreeNames) {
  CRUXSection& section = WithThreeGlobals(Create("GLOBAL"));
  for (std::uint32_t i = 0; i < 3; ++i) {
    std::uint32_t index = i;
    EXPECT_EQ(FindEntry(&section, kG, index), section.entries[i]);
    EXPECT_EQ(index, i);
  }
}

TEST_F(LookupTest, FindEntryCountsEntriesWithFreeNames) {
  std::uint32_t index = kCount;
  EXPECT_EQ(FindEntry(&WithThreeGlobals(Create("GLOBAL")), kG, index), nullptr);
  EXPECT_EQ(index, 3u);
}

TEST_F(LookupTest, FindEntryLeavesAnyOtherIndexAlone) {
  for (const std::uint32_t asked : {3u, 5u, kCount - 1}) {
    std::uint32_t index = asked;
    EXPECT_EQ(FindEntry(&WithThreeGlobals(Create("GLOBAL")), kG, index), nullptr);
    EXPECT_EQ(index, asked);
  }
}

TEST_F(LookupTest, FindEntryTakesAnEntryOfAFixedNameWhateverTheIndexSays) {
  CRUXSection& section = Create("SENSOR");
  for (const std::uint32_t asked : {0u, 5u, kCount}) {
    std::uint32_t index = asked;
    EXPECT_EQ(FindEntry(&section, kName, index), section.entries[1]);
    EXPECT_EQ(index, asked);
  }
}

TEST_F(LookupTest, FindEntryTakesTheTemplateBeforeItsRepeats) {
  CRUXSection& section = Create("TABLE");
  section.SetEntry("board.rux", "NAME", "a", 2);
  section.SetEntry("board.rux", "NAME", "b", 3);
  std::uint32_t index = 1;
  EXPECT_EQ(FindEntry(&section, kName, index), section.entries[0]);
}

// VERSION is no entry of a TABLE.
TEST_F(LookupTest, FindEntryFindsNothingOfAnotherIdentifier) {
  std::uint32_t index = 0;
  EXPECT_EQ(FindEntry(&Create("TABLE"), kVersion, index), nullptr);
  EXPECT_EQ(index, 0u);
  index = kCount;
  EXPECT_EQ(FindEntry(&Create("TABLE"), kVersion, index), nullptr);
  EXPECT_EQ(index, 0u);
}

TEST_F(LookupTest, FindEntryCountsOneIdentifierAtATime) {
  CRUXSection& section = Create("SENSOR");
  for (const char* key : {"VALUE_1", "P_A", "VALUE_2", "P_B", "P_C"}) {
    section.SetEntry("board.rux", key, "1", 2);
  }
  std::uint32_t index = kCount;
  EXPECT_EQ(FindEntry(&section, 0x10020018, index), nullptr);
  EXPECT_EQ(index, 3u);
  index = 1;
  EXPECT_EQ(FindEntry(&section, 0x10080008, index)->name, "VALUE_2");
}

TEST_F(LookupTest, FindSectHeadHoldsTheSectionsOfAKindInOrder) {
  CRUXSection& first = Create("TABLE");
  Create("SENSOR");
  CRUXSection& second = Create("TABLE");
  const std::vector<CRUXSection*>* tables = FindSectHead(0x20000008);
  ASSERT_NE(tables, nullptr);
  EXPECT_EQ(*tables, (std::vector<CRUXSection*>{&first, &second}));
}

TEST_F(LookupTest, FindSectHeadFindsNothingOfAKindWithoutSections) {
  EXPECT_EQ(FindSectHead(0x20000008), nullptr);
  Create("SENSOR");
  EXPECT_EQ(FindSectHead(0x20000008), nullptr);
  Create("TABLE");
  CRUXSection::Destory();
  EXPECT_EQ(FindSectHead(0x20000008), nullptr);
  Create("SENSOR");
  EXPECT_EQ(FindSectHead(0x20000008), nullptr);
  EXPECT_NE(FindSectHead(0x20000005), nullptr);
}

}  // namespace
