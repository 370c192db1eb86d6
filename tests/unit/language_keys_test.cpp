// Which entries keys become, stated by hand and compared with what the parse loop's sections make.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "frontend/section.h"
#include "ruxcomp/language/keys.h"

using namespace ruxcomp::core;

namespace {

namespace language = ruxcomp::language;

struct KeyFacts {
  const char* section;
  const char* key;
  std::uint32_t entry;  // 0: rejected
  std::size_t index = 0;
};

constexpr KeyFacts kKeys[] = {
    {"MORVRUX", "VERSION", language::ENTRY_VERSION},
    {"MORVRUX", "VERSIO", 0},
    {"PROPERTY", "P_Height", language::ENTRY_PROPERTY},
    {"SYSTEM", "P_Slots", language::ENTRY_P},
    {"SYSTEM", "Slots", language::ENTRY_P},
    {"GROUP", "NAME", language::ENTRY_NAME},
    {"GROUP", "VALUE_EXIT", language::ENTRY_VALUE_EXIT},
    {"GROUP", "VALUE", 0},
    {"GROUP", "P_Height", 0},
    {"SENSOR", "THRESHOLD_WH", language::ENTRY_THRESHOLD_WH},
    {"SENSOR", "VALUE", language::ENTRY_VALUE},
    {"SENSOR", "VALUE_INIT", language::ENTRY_VALUE_INIT},
    {"SENSOR", "VALUE_", language::ENTRY_VALUE_OF_SENSOR},
    {"SENSOR", "P_", language::ENTRY_P},
    {"SENSOR", "P", language::ENTRY_VALUE_OF_SENSOR},
    {"DEVICE", "VALUE_INIT", language::ENTRY_VALUE_OF_SENSOR},
    {"ACTION", "VALUE_1", language::ENTRY_VALUE_OF_ACTION},
    {"ACTION", "VALUE_IPMI", language::ENTRY_VALUE_IPMI},
    {"TABLE", "TYPE", language::ENTRY_TYPE},
    {"TABLE", "0.255", language::ENTRY_TABLE_ROW},
    {"PELMGROUP", "SENSORS", language::ENTRY_SENSORS},
    {"PELMGROUP", "Height", language::ENTRY_P},
    {"GLOBAL", "G_X", language::ENTRY_G},
    {"REPEATER", "NAME", language::ENTRY_REPEATER},
    {"DEFINE", "NAME", language::ENTRY_DEFINED_WORD},
    {"INCLUDE", "FILE", language::ENTRY_FILE},
    {"IFDEF", "DEFINEWORD", language::ENTRY_DEFINEWORD},
    {"IFDEF", "NAME", 0},
    {"IFDEF", "NAME", language::ENTRY_DEFINED_WORD, 1},
    {"IFDEF", "DEFINEWORD", language::ENTRY_DEFINED_WORD, 1},
};

TEST(LanguageKeysTest, KeysBecomeEntries) {
  for (const KeyFacts& facts : kKeys) {
    SCOPED_TRACE(std::string(facts.section) + ' ' + facts.key);
    const language::SectionKind* kind = language::FindKind(facts.section);
    ASSERT_NE(kind, nullptr);
    const std::size_t row = language::FindKeyRow(*kind, facts.key, facts.index);
    EXPECT_EQ(language::EntryOfRow(*kind, row), facts.entry);
    EXPECT_EQ(row == language::KeyRowCount(*kind), facts.entry == 0);
  }
}

// Whether the section has exactly one item, of that entry.
testing::AssertionResult HasOnly(const CRUXSection& section, std::uint32_t entry) {
  std::vector<std::uint32_t> given;
  for (const auto& each : section.entries) {
    if (each && !each->name.empty()) given.push_back(each->identifier);
  }
  if (entry == 0 && given.empty()) return testing::AssertionSuccess();
  if (given == std::vector<std::uint32_t>{entry}) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "has " << testing::PrintToString(given);
}

TEST(LanguageKeysTest, SectionsMakeTheSameEntries) {
  for (const KeyFacts& facts : kKeys) {
    // The kinds that act while the script is read check their items at once.
    const language::SectionKind& kind = *language::FindKind(facts.section);
    if (!kind.IsCompiled()) continue;
    SCOPED_TRACE(std::string(facts.section) + ' ' + facts.key);
    CRUXSection* section = CRUXSection::Create("board.rux", facts.section, 1);
    ASSERT_NE(section, nullptr);
    EXPECT_EQ(section->SetEntry("board.rux", facts.key, "1", 2), facts.entry != 0 ? 1u : 0u);
    EXPECT_TRUE(HasOnly(*section, facts.entry));
  }
  CRUXSection::Destory();
}

}  // namespace
