// The values of an entry: by ordinal, and by selector.
#include <algorithm>
#include <iterator>
#include <ostream>

#include "ruxcomp/language/selectors.h"
#include "tests/api/meta_bytes.h"

namespace {

constexpr std::uint32_t kGlobalSection = 0x0100000A;
constexpr std::uint32_t kGlobal = 0x04000000, kValue = 0x05000000, kRepeater = 0x06000000;

// A code that no function stores: seen afterwards when one forgot to.
constexpr std::uint32_t kUntouched = 99;

const char kNothing[] = "0xFFFFFFFF nothing";

class QueryValuesTest : public MetaTest {
 protected:
  // The lone entry, of that identifier and with those values, of a file that holds the numbers 100,
  // 101, ... 119 under 0x11000000, 0x11000001, ... and the string "text" under 0x12000000.
  GCENTRY Given(std::uint32_t identifier, const Words& values) {
    Words numbers;
    for (std::uint32_t i = 0; i < 20; ++i) numbers.push_back(100 + i);
    EXPECT_EQ(Load(MetaBytes()
                       .Section(kGlobalSection, {{identifier, values}})
                       .Numbers(numbers)
                       .Strings(0x12000000, {"text"})
                       .str()),
              1u);
    const GCENTRY entry = gcGetEntryByIndex(gcGetSectByIndex(kGlobalSection, 0), 0, nullptr);
    gcSetLastError(kUntouched);
    return entry;
  }

  // `first`, and then the indices of 101, 102, ... at the positions 1, 2, ...
  static Words Values(std::uint32_t first, std::uint32_t count) {
    Words values(count);
    for (std::uint32_t i = 0; i < count; ++i) values[i] = 0x11000000 + i;
    if (count > 0) values[0] = first;
    return values;
  }
};

#define EXPECT_VALUE(query, shown, code) \
  EXPECT_EQ(Show(query), shown);         \
  EXPECT_EQ(gcGetLastError(), code)

TEST_F(QueryValuesTest, ANullEntryIs2) {
  EXPECT_EQ(gcGetValueCount(nullptr), 0xFFFFFFFFu);
  EXPECT_EQ(gcGetLastError(), 2u);
  gcSetLastError(kUntouched);
  EXPECT_EQ(gcGetValueByIndex(nullptr, 0).kind, 0u);
  EXPECT_EQ(gcGetLastError(), 2u);
  gcSetLastError(kUntouched);
  EXPECT_VALUE(gcGetValueByID(nullptr, 0x10000), kNothing, 2u);
}

TEST_F(QueryValuesTest, ValuesAreCounted) {
  EXPECT_EQ(gcGetValueCount(Given(kGlobal, {1, 2, 3})), 3u);
  EXPECT_EQ(gcGetLastError(), 0u);
}

TEST_F(QueryValuesTest, AnEntryMayHaveNoValues) {
  const GCENTRY entry = Given(kGlobal, {});
  EXPECT_EQ(gcGetValueCount(entry), 0u);
  EXPECT_EQ(gcGetLastError(), 0u);
  EXPECT_VALUE(gcGetValueByIndex(entry, 0), kNothing, 3u);
  EXPECT_VALUE(gcGetValueByIndex(entry, 0xFFFFFFFF), kNothing, 3u);
}

TEST_F(QueryValuesTest, AValueIsLookedUpByItsOrdinal) {
  const GCENTRY entry = Given(0x02000015, {0x11000003, 0x12000000, 0x1D000007});
  EXPECT_VALUE(gcGetValueByIndex(entry, 0), "0x11000003 number 103", 0u);
  EXPECT_VALUE(gcGetValueByIndex(entry, 1), "0x12000000 string text", 0u);
  EXPECT_VALUE(gcGetValueByIndex(entry, 2), "0x1D000007 number 7", 0u);
}

TEST_F(QueryValuesTest, AnOrdinalBeyondTheValuesIs4) {
  const GCENTRY entry = Given(0x02000015, {0x11000003});
  EXPECT_VALUE(gcGetValueByIndex(entry, 1), kNothing, 4u);
  EXPECT_VALUE(gcGetValueByIndex(entry, 0xFFFFFFFF), kNothing, 4u);
}

TEST_F(QueryValuesTest, AValueThatStandsForNothingIs10) {
  const GCENTRY entry = Given(0x02000015, {0x12000001, 0xFFFFFFFF, 0, 0x02000015});
  EXPECT_VALUE(gcGetValueByIndex(entry, 0), "0x12000001 nothing", 10u);
  EXPECT_VALUE(gcGetValueByIndex(entry, 1), "0xFFFFFFFF nothing", 10u);
  EXPECT_VALUE(gcGetValueByIndex(entry, 2), "0x00000000 nothing", 10u);
  EXPECT_VALUE(gcGetValueByIndex(entry, 3), "0x02000015 nothing", 10u);
}

TEST_F(QueryValuesTest, StringsStayAfterReleasing) {
  const tagTBLDATA data = gcGetValueByIndex(Given(0x02000015, {0x12000000}), 0);
  gcUnInit();
  EXPECT_EQ(Show(data), "0x12000000 string text");
}

TEST_F(QueryValuesTest, OtherEntriesThanValuesGlobalsAndRepeatersAre11) {
  for (const std::uint32_t identifier :
       {0x02000015u, 0x03000000u, 0x11000000u, 0x12000000u, 0u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(identifier);
    EXPECT_VALUE(gcGetValueByID(Given(identifier, {0x1E000001, 0x11000000}), 0x10000), kNothing,
                 11u);
    gcUnInit();
    EXPECT_VALUE(gcGetValueByID(Given(identifier, {}), 0x10000), kNothing, 11u);
    gcUnInit();
  }
}

TEST_F(QueryValuesTest, ASelectorOfAnEntryWithoutValuesIs3) {
  for (const std::uint32_t identifier : {kGlobal, kValue, kRepeater}) {
    EXPECT_VALUE(gcGetValueByID(Given(identifier, {}), 0x10000), kNothing, 3u);
    gcUnInit();
  }
}

TEST_F(QueryValuesTest, AnEntryWhoseFirstValueIsNoNumberIs10) {
  for (const std::uint32_t first : {0x12000000u, 0x12000001u, 0xFFFFFFFFu}) {
    const GCENTRY entry = Given(kValue, {first, 0x11000000});
    EXPECT_VALUE(gcGetValueByID(entry, 0x10000), kNothing, 10u);
    EXPECT_VALUE(gcGetValueByID(entry, 0x20000), kNothing, 10u);
    gcUnInit();
  }
}

// Whatever class it is of.
TEST_F(QueryValuesTest, AnyNumberAsFirstValueIsTheType) {
  const GCENTRY entry = Given(kValue, {0x11000001, 0x11000005});  // 101
  EXPECT_VALUE(gcGetValueByID(entry, 0x10000), "0x11000001 number 101", 0u);
  EXPECT_VALUE(gcGetValueByID(entry, 0x140000), "0x11000005 number 105", 0u);
}

TEST_F(QueryValuesTest, APickedValueThatStandsForNothingIs10) {
  EXPECT_VALUE(gcGetValueByID(Given(kValue, {0x1E000001, 0xFFFFFFFF}), 0x20000),
               "0xFFFFFFFF nothing", 10u);
  gcUnInit();
  EXPECT_VALUE(gcGetValueByID(Given(kRepeater, {0x11000050, 0x1A000000}), 0x160000),
               "0x11000050 nothing", 10u);
  EXPECT_EQ(gcGetLastError(), 10u);
}

// Which position each selector picks from an entry of that type and that many values. Every
// selector that is not listed picks nothing.
struct SelectorRow {
  const char* name;
  std::vector<std::uint32_t> types;
  std::vector<std::uint32_t> counts;
  std::map<std::uint32_t, std::uint32_t> positions;
};
std::ostream& operator<<(std::ostream& out, const SelectorRow& row) { return out << row.name; }

class SelectorTest : public QueryValuesTest, public testing::WithParamInterface<SelectorRow> {
 protected:
  // Tries every group from its base to beyond its last item, and numbers around all groups.
  static void ExpectPicks(GCENTRY entry, const Words& values,
                          const std::map<std::uint32_t, std::uint32_t>& positions) {
    Words selectors = {0, 1, 0xFFFF, 0xFFFFFFFF};
    for (std::uint32_t base = 0x10000; base <= 0x1D0000; base += 0x10000) {
      for (std::uint32_t i = 0; i <= values.size() + 1; ++i) selectors.push_back(base + i);
      selectors.push_back(base + 0xFFFF);
    }
    for (const std::uint32_t selector : selectors) {
      SCOPED_TRACE(Hex({selector}));
      const auto pick = positions.find(selector);
      gcSetLastError(kUntouched);
      const tagTBLDATA picked = gcGetValueByID(entry, selector);
      if (pick == positions.end()) {
        EXPECT_VALUE(picked, kNothing, 3u);
      } else {
        EXPECT_EQ(Hex({picked.index}), Hex({values[pick->second]}));
        EXPECT_EQ(picked.kind, 1u);
        EXPECT_EQ(gcGetLastError(), 0u);
      }
    }
  }
};

TEST_P(SelectorTest, PicksItsPositionAndNoOtherDoes) {
  for (const std::uint32_t type : GetParam().types) {
    for (const std::uint32_t count : GetParam().counts) {
      for (const std::uint32_t identifier : {kGlobal, kValue}) {
        SCOPED_TRACE("type " + std::to_string(type) + ", " + std::to_string(count) + " values");
        const Words values = Values(0x1E000000 + type, count);
        auto positions = GetParam().positions;
        positions[0x10000] = 0;  // the type, of every value
        ExpectPicks(Given(identifier, values), values, positions);
        gcUnInit();
      }
    }
  }
}

const SelectorRow kRows[] = {
    {"Type1", {1}, {2}, {{0x20000, 1}}},
    {"Type1OfAnotherCount", {1}, {1, 3}, {}},
    {"Type2Of4", {2}, {4}, {{0x30000, 1}, {0x40000, 1}, {0x40001, 2}, {0x40002, 3}}},
    {"Type2Of6",
     {2},
     {6},
     {{0x30000, 1},
      {0x40000, 1},
      {0x40001, 2},
      {0x40002, 3},
      {0x50000, 3},
      {0x50001, 4},
      {0x50002, 5}}},
    {"Type2OfAnotherCount", {2}, {1, 2, 3, 5, 7}, {}},
    {"Type3Of2", {3}, {2}, {{0x60000, 1}, {0x70000, 1}}},
    {"Type3Of4", {3}, {4}, {{0x60000, 1}, {0x70000, 1}, {0x70001, 2}, {0x70002, 3}}},
    {"Type3OfAnotherCount", {3}, {1}, {}},
    {"Types4And8And12",
     {4, 8, 12},
     {5, 6, 9},
     {{0x80000, 1}, {0x90000, 2}, {0xA0000, 3}, {0xB0000, 4}}},
    {"Types4And8And12OfAnotherCount", {4, 8, 12}, {1, 4}, {}},
    {"Types5And9And11Of6",
     {5, 9, 11},
     {6},
     {{0x80000, 1}, {0x90000, 2}, {0xA0000, 3}, {0xB0000, 4}, {0xC0000, 4}, {0xC0001, 5}}},
    {"Types5And9And11Of8",
     {5, 9, 11},
     {8},
     {{0x80000, 1},
      {0x90000, 2},
      {0xA0000, 3},
      {0xB0000, 4},
      {0xC0000, 4},
      {0xC0001, 5},
      {0xC0002, 6},
      {0xC0003, 7}}},
    {"Types5And9And11OfAnotherCount", {5, 9, 11}, {1, 5}, {}},
    {"Type6Of3", {6}, {3}, {{0xD0000, 1}, {0xE0000, 2}, {0xF0000, 2}}},
    {"Type6Of5", {6}, {5}, {{0xD0000, 1}, {0xE0000, 2}, {0xF0000, 2}, {0xF0001, 3}, {0xF0002, 4}}},
    {"Type6OfAnotherCount", {6}, {1, 2}, {}},
    {"Type7Of1", {7}, {1}, {{0x100000, 0}}},
    {"Type7Of3", {7}, {3}, {{0x100000, 0}, {0x100001, 1}, {0x100002, 2}}},
    {"Type7Of5",
     {7},
     {5},
     {{0x100000, 0}, {0x100001, 1}, {0x100002, 2}, {0x100003, 3}, {0x100004, 4}}},
    {"Type7OfAnotherCount", {7}, {6, 7}, {}},
    {"Type10", {10}, {3}, {{0x120000, 1}, {0x130000, 2}}},
    {"Type10OfAnotherCount", {10}, {1, 2, 4}, {}},
    {"Type101", {101}, {2}, {{0x140000, 1}}},
    {"Type102Of3", {102}, {3}, {{0x150000, 1}, {0x170000, 2}, {0x180000, 2}}},
    {"Type102Of5",
     {102},
     {5},
     {{0x150000, 1}, {0x170000, 2}, {0x180000, 2}, {0x180001, 3}, {0x180002, 4}}},
    {"Type102OfAnotherCount", {102}, {1, 2}, {}},
    {"Type103", {103}, {2}, {{0x190000, 1}}},
    {"Type104", {104}, {2}, {{0x1A0000, 1}}},
    {"Types101And103And104OfAnotherCount", {101, 103, 104}, {1, 3}, {}},
    {"TypesWithoutParts", {0, 13, 100, 105, 0xFFFFFF}, {1, 2, 3, 4, 5, 6}, {}},
};

INSTANTIATE_TEST_SUITE_P(Rows, SelectorTest, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(SelectorRowsTest, EverySelectorOfATypeHasARow) {
  for (const ruxcomp::language::SelectorRow& each : ruxcomp::language::kSelectorRows) {
    const bool has_row =
        std::any_of(std::begin(kRows), std::end(kRows), [&](const SelectorRow& row) {
          return std::count(row.types.begin(), row.types.end(), each.type) == 1 &&
                 row.positions.count(each.selector) == 1;
        });
    EXPECT_TRUE(has_row || each.type == ruxcomp::language::kRepeaterType)
        << "type " << each.type << ", " << each.name;
  }
}

// Repeater entries have no type: their first value is the count.
const SelectorRow kRepeaterRows[] = {
    {"Of2", {}, {2}, {{0x160000, 0}, {0x170000, 1}, {0x180000, 1}}},
    {"Of4", {}, {4}, {{0x160000, 0}, {0x170000, 1}, {0x180000, 1}, {0x180001, 2}, {0x180002, 3}}},
    {"OfAnotherCount", {}, {0, 1}, {}},
};

class RepeaterSelectorTest : public SelectorTest {};

TEST_P(RepeaterSelectorTest, PicksItsPositionAndNoOtherDoes) {
  for (const std::uint32_t count : GetParam().counts) {
    SCOPED_TRACE(count);
    const Words values = Values(0x11000000, count);
    ExpectPicks(Given(kRepeater, values), values, GetParam().positions);
    gcUnInit();
  }
}

INSTANTIATE_TEST_SUITE_P(Rows, RepeaterSelectorTest, testing::ValuesIn(kRepeaterRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(QueryValuesTest, ThePartsOfACompiledValueAreFoundByTheirSelectors) {
  LoadScript(
      "[DEFINE]\nT2 = 2\n[GLOBAL]\nG_A = T2,<=,G_A,5,6,7\n"
      "[REPEATER]\nTICK = 3,BEEP,8\n[ACTION]\nNAME = BEEP\n");
  const GCENTRY global = gcGetEntryByName(gcGetSectByIndex(kGlobalSection, 0), "A", nullptr);
  EXPECT_VALUE(gcGetValueByID(global, 0x10000), "0x1E000002 number 2", 0u);
  EXPECT_VALUE(gcGetValueByID(global, 0x30000), "0x1F00006A number 106", 0u);
  EXPECT_VALUE(gcGetValueByID(global, 0x40001), "0x04000000 string A", 0u);
  EXPECT_VALUE(gcGetValueByID(global, 0x40002), "0x11000000 number 5", 0u);
  EXPECT_VALUE(gcGetValueByID(global, 0x50001), "0x11000001 number 6", 0u);
  EXPECT_VALUE(gcGetValueByID(global, 0x50002), "0x11000002 number 7", 0u);
  const GCENTRY tick = gcGetEntryByName(gcGetSectByIndex(0x0100000B, 0), "TICK", nullptr);
  EXPECT_VALUE(gcGetValueByID(tick, 0x160000), "0x11000003 number 3", 0u);
  EXPECT_VALUE(gcGetValueByID(tick, 0x170000), "0x1A000000 string BEEP", 0u);
  EXPECT_VALUE(gcGetValueByID(tick, 0x180001), "0x11000004 number 8", 0u);
}

}  // namespace
