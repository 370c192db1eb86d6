// Sections: made by keyword, registered by kind, filled by their kinds' rules.
#include "frontend/section.h"

#include "debugmeta/bytes.h"
#include "frontend/defined_words.h"
#include "frontend/section_kinds.h"
#include "tests/unit/model_test.h"
#include "tests/unit/section_templates.h"

using namespace ruxcomp::core;

namespace {

class SectionKindTest : public ModelTest, public ::testing::WithParamInterface<KindRow> {};

void ExpectEmptySlots(const CRUXSection& section, const std::vector<TemplateRow>& templates) {
  ASSERT_EQ(section.entries.size(), templates.size());
  for (std::size_t i = 0; i < templates.size(); ++i) {
    SCOPED_TRACE(templates[i].key);
    EXPECT_EQ(section.entries[i], nullptr);
    EXPECT_EQ(section.TemplateOf(i).identifier, templates[i].identifier);
    EXPECT_EQ(section.TemplateOf(i).notation, templates[i].notation);
    EXPECT_TRUE(section.HasEmptySlot(templates[i].identifier));
  }
}

bool IsOfItsClass(const CRUXEntry& entry) {
  switch (entry.identifier & 0xFFFF0000) {
    case 0x10010000:
      return dynamic_cast<const CGEDWORD*>(&entry) != nullptr;
    case 0x10020000:
      return dynamic_cast<const CGESTRING*>(&entry) != nullptr;
    case 0x10040000:
      return dynamic_cast<const CGESTRINGLIST*>(&entry) != nullptr;
    case 0x10080000:
      return dynamic_cast<const CGEVALUE*>(&entry) != nullptr;
    case 0x10100000:
      return dynamic_cast<const CGEREPEATER*>(&entry) != nullptr;
    default:
      return false;
  }
}

TEST_P(SectionKindTest, CreateMakesItsSlots) {
  const CRUXSection& section = Create(GetParam().keyword, "a\\board.rux", 9);
  EXPECT_EQ(section.identifier, GetParam().identifier);
  EXPECT_EQ(section.notation, GetParam().notation);
  EXPECT_EQ(section.name, GetParam().keyword);
  EXPECT_EQ(section.line, 9u);
  EXPECT_EQ(section.GetFile(0), "board.rux");
  ExpectEmptySlots(section, GetParam().templates);
}

TEST_P(SectionKindTest, ItemsFillTheSlotsOfTheirKeys) {
  CRUXSection& section = Create(GetParam().keyword);
  const std::vector<TemplateRow>& templates = GetParam().templates;
  for (std::size_t i = 0; i < templates.size(); ++i) {
    SCOPED_TRACE(templates[i].key);
    ASSERT_EQ(section.CRUXSection::SetEntry("b.rux", templates[i].key, "1", 4), 1u);
    ASSERT_EQ(section.entries.size(), templates.size());
    const CRUXEntry& entry = *section.entries[i];
    EXPECT_TRUE(IsOfItsClass(entry));
    EXPECT_EQ(entry.identifier, templates[i].identifier);
    EXPECT_EQ(entry.notation, templates[i].notation);
    EXPECT_EQ(entry.name, templates[i].key);
    EXPECT_FALSE(section.HasEmptySlot(entry.identifier));
  }
}

// As it was stored: entries without place, name and payload.
TEST_P(SectionKindTest, RestoringMakesAnEntryInEverySlot) {
  std::vector<std::uint8_t> record;
  Create(GetParam().keyword).GetBuffer(record);
  CRUXSection& section = Create(GetParam().keyword);
  section.SetBuffer(record);
  const std::vector<TemplateRow>& templates = GetParam().templates;
  ASSERT_EQ(section.entries.size(), templates.size());
  for (std::size_t i = 0; i < templates.size(); ++i) {
    SCOPED_TRACE(templates[i].key);
    ASSERT_NE(section.entries[i], nullptr);
    const CRUXEntry& entry = *section.entries[i];
    EXPECT_TRUE(IsOfItsClass(entry));
    EXPECT_EQ(entry.identifier, templates[i].identifier);
    EXPECT_EQ(entry.notation, templates[i].notation);
    EXPECT_EQ(entry.name, "");
    EXPECT_EQ(entry.line, 0u);
    EXPECT_EQ(entry.fileIndex, 0u);
    EXPECT_EQ(TextsOf(entry.ListItems()), (Texts{}));
    EXPECT_FALSE(entry.m_RuxEntryData.HasData());
  }
}

TEST_P(SectionKindTest, CreateRegistersItsKindOnce) {
  CRUXSection& first = Create(GetParam().keyword);
  CRUXSection& second = Create(GetParam().keyword);
  ASSERT_EQ(CRUXSection::m_svpHSection.size(), 1u);
  EXPECT_EQ(*CRUXSection::m_svpHSection[0], (std::vector<CRUXSection*>{&first, &second}));
}

// As a stored section is restored: identifier and flags come later.
TEST_P(SectionKindTest, EmptySectionHasItsSlotsAndIsRegistered) {
  for (std::size_t row = 0; row < KindRows().size(); ++row) {
    if (kSectionMakers[row].identifier != GetParam().identifier) continue;
    CRUXSection* section = kSectionMakers[row].make_empty();
    ExpectEmptySlots(*section, GetParam().templates);
    EXPECT_EQ(section->name, "");
    ASSERT_EQ(CRUXSection::m_svpHSection.size(), 1u);
    EXPECT_EQ(*CRUXSection::m_svpHSection[0], std::vector<CRUXSection*>{section});
    return;
  }
  FAIL() << "no maker";
}

INSTANTIATE_TEST_SUITE_P(, SectionKindTest, ::testing::ValuesIn(KindRows()),
                         [](const auto& kind) { return std::string(kind.param.keyword); });

// Every class of section has a list of its own.
TEST(SectionClassTest, ListsBelongToTheirClasses) {
#define EXPECT_LIST(keyword)                                              \
  EXPECT_TRUE(CGS##keyword::m_sHeader.empty());                           \
  EXPECT_NE(CRUXSection::Create("board.rux", #keyword, 1), nullptr);      \
  EXPECT_EQ(CGS##keyword::m_sHeader.size(), 1u);                          \
  EXPECT_EQ(CRUXSection::m_svpHSection.back(), &CGS##keyword::m_sHeader); \
  EXPECT_NE(dynamic_cast<CGS##keyword*>(CGS##keyword::m_sHeader[0]), nullptr);
  EXPECT_LIST(MORVRUX)
  EXPECT_LIST(PROPERTY)
  EXPECT_LIST(SYSTEM)
  EXPECT_LIST(GROUP)
  EXPECT_LIST(SENSOR)
  EXPECT_LIST(DEVICE)
  EXPECT_LIST(ACTION)
  EXPECT_LIST(TABLE)
  EXPECT_LIST(PELMGROUP)
  EXPECT_LIST(GLOBAL)
  EXPECT_LIST(REPEATER)
  EXPECT_LIST(DEFINE)
  EXPECT_LIST(IFDEF)
  EXPECT_LIST(INCLUDE)
  EXPECT_EQ(CRUXSection::m_svpHSection.size(), 14u);
  CRUXSection::Destory();
}

struct FreeRow {
  const char* keyword;
  const char* key;
  std::uint32_t identifier;
  std::uint32_t notation;
};

class FreeEntryTest : public ModelTest, public ::testing::WithParamInterface<FreeRow> {};

void PrintTo(const FreeRow& row, std::ostream* out) { *out << row.keyword << ':' << row.key; }

TEST_P(FreeEntryTest, IsMadeForAKeyThatNoTemplateTakes) {
  const FreeRow& row = GetParam();
  CRUXSection& section = Create(row.keyword);
  const std::size_t templates = section.entries.size();
  EXPECT_EQ(section.SetEntry("b.rux", row.key, "1,2", 7), 1u);
  ASSERT_EQ(section.entries.size(), templates + 1);
  const CRUXEntry& entry = *section.entries.back();
  EXPECT_EQ(entry.identifier, row.identifier);
  EXPECT_EQ(entry.notation, row.notation);
  EXPECT_TRUE(IsOfItsClass(entry));
  EXPECT_EQ(entry.name, row.key);
  EXPECT_EQ(entry.line, 7u);
  EXPECT_EQ(entry.GetFile(0), "b.rux");
  EXPECT_EQ(TextsOf(entry.ListItems()), (Texts{"1", "2"}));
  EXPECT_EQ(entry.m_RuxEntryData.GetType(), row.identifier);
}

const FreeRow kFreeRows[] = {
    {"SYSTEM", "P_X", 0x10020018, 10},       {"SYSTEM", "X", 0x10020018, 10},
    {"SYSTEM", "NAME", 0x10020018, 10},      {"SYSTEM", "P_", 0x10020018, 10},
    {"PELMGROUP", "P_X", 0x10020018, 10},    {"PELMGROUP", "VALUE", 0x10020018, 10},
    {"SENSOR", "P_X", 0x10020018, 10},       {"SENSOR", "P_", 0x10020018, 10},
    {"SENSOR", "X", 0x10080008, 46},         {"SENSOR", "VALUE_1", 0x10080008, 46},
    {"SENSOR", "P", 0x10080008, 46},         {"SENSOR", "p_X", 0x10080008, 46},
    {"SENSOR", "VALUE_", 0x10080008, 46},    {"SENSOR", "XP_", 0x10080008, 46},
    {"SENSOR", "ARGNUMBER", 0x10080008, 46}, {"DEVICE", "P_X", 0x10020018, 10},
    {"DEVICE", "VALUE", 0x10080008, 46},     {"DEVICE", "VALUE_INIT", 0x10080008, 46},
    {"DEVICE", "X", 0x10080008, 46},         {"ACTION", "VALUE_1", 0x10080007, 14},
    {"ACTION", "P_X", 0x10080007, 14},       {"ACTION", "X", 0x10080007, 14},
    {"ACTION", "VALUE_", 0x10080007, 14},    {"TABLE", "5", 0x10020012, 10},
    {"TABLE", "P_X", 0x10020012, 10},        {"TABLE", "VALUE", 0x10020012, 10},
    {"GLOBAL", "G_X", 0x10080001, 46},       {"GLOBAL", "G_", 0x10080001, 46},
    {"GLOBAL", "NAME", 0x10080001, 46},      {"GLOBAL", "VALUE", 0x10080001, 46},
    {"GLOBAL", "P_X", 0x10080001, 46},       {"PROPERTY", "X", 0x10020017, 10},
    {"PROPERTY", "P_X", 0x10020017, 10},     {"PROPERTY", "NAME", 0x10020017, 10},
    {"REPEATER", "X", 0x10100001, 10},       {"REPEATER", "VALUE_1", 0x10100001, 10},
};

INSTANTIATE_TEST_SUITE_P(, FreeEntryTest, ::testing::ValuesIn(kFreeRows));

using SectionTest = ModelTest;

TEST_F(SectionTest, CreateComparesKeywordsExactly) {
  for (const char* name : {"", "sensor", "Sensor", "SENSOR ", "SENS", "SENSORS", "VERSION"}) {
    EXPECT_EQ(CRUXSection::Create("board.rux", name, 1), nullptr) << name;
  }
  EXPECT_TRUE(CRUXSection::m_svpHSection.empty());
  EXPECT_EQ(host::TakeMessages(), std::vector<std::string>{});
}

TEST_F(SectionTest, FirstItemFillsTheTemplate) {
  CRUXSection& section = Create("SENSOR");
  EXPECT_EQ(section.SetEntry("b.rux", "NAME", "cpu", 4), 1u);
  EXPECT_EQ(section.entries.size(), 17u);
  const CRUXEntry& entry = *section.entries[1];
  EXPECT_EQ(entry.name, "NAME");
  EXPECT_EQ(entry.notation, 1u);
  EXPECT_EQ(entry.line, 4u);
  EXPECT_EQ(entry.GetFile(0), "b.rux");
  EXPECT_EQ(TextsOf(entry.ListItems()), (Texts{"cpu"}));
}

TEST_F(SectionTest, RepeatedKeyIsAnotherEntryOfNotationTwo) {
  CRUXSection& section = Create("SENSOR");
  section.SetEntry("b.rux", "NAME", "first", 4);
  EXPECT_EQ(section.SetEntry("b.rux", "NAME", "second", 5), 1u);
  EXPECT_EQ(section.SetEntry("b.rux", "NAME", "third", 6), 1u);
  ASSERT_EQ(section.entries.size(), 19u);
  EXPECT_EQ(TextsOf(section.entries[1]->ListItems()), (Texts{"first"}));
  for (const std::size_t repeat : {17u, 18u}) {
    const CRUXEntry& entry = *section.entries[repeat];
    EXPECT_NE(dynamic_cast<const CGESTRING*>(&entry), nullptr);
    EXPECT_EQ(entry.identifier, 0x10020015u);
    EXPECT_EQ(entry.notation, 2u);
    EXPECT_EQ(entry.name, "NAME");
  }
  EXPECT_EQ(TextsOf(section.entries[17]->ListItems()), (Texts{"second"}));
  EXPECT_EQ(section.entries[18]->line, 6u);
}

TEST_F(SectionTest, RepeatIsOfTheTemplatesClass) {
  CRUXSection& group = Create("PELMGROUP");
  CRUXSection& sensor = Create("SENSOR");
  for (int i = 0; i < 2; ++i) {
    group.SetEntry("b.rux", "SENSORS", "1", 4);
    sensor.SetEntry("b.rux", "VALUE", "VT", 4);
  }
  EXPECT_NE(dynamic_cast<CGESTRINGLIST*>(group.entries.back()), nullptr);
  EXPECT_EQ(group.entries.back()->notation, 2u);
  EXPECT_NE(dynamic_cast<CGEVALUE*>(sensor.entries.back()), nullptr);
  EXPECT_EQ(sensor.entries.back()->identifier, 0x10080000u);
  EXPECT_EQ(sensor.entries.back()->notation, 2u);
}

TEST_F(SectionTest, CommonRuleRejectsWhatNoTemplateTakes) {
  CRUXSection& section = Create("GROUP");
  for (const char* key : {"", "X", "name", "ID", "P_", "G_", "VALUE_", "VALUE"}) {
    EXPECT_EQ(section.SetEntry("b.rux", key, "1", 4), 0u) << key;
  }
  EXPECT_EQ(section.entries.size(), 7u);
  EXPECT_EQ(host::TakeMessages(), std::vector<std::string>{});
}

// An entry of a prefix whose key is the prefix itself looks like a match and is none.
TEST_F(SectionTest, CommonRuleSkipsEntriesOfFreeNames) {
  CRUXSection& section = Create("SYSTEM");
  section.SetEntry("b.rux", "P_", "1", 4);
  ASSERT_EQ(section.entries.size(), 7u);
  EXPECT_EQ(section.CRUXSection::SetEntry("b.rux", "P_", "2", 5), 0u);
  EXPECT_EQ(section.entries.size(), 7u);
}

TEST_F(SectionTest, DestoryEmptiesTheKindsAndKeepsTheirOrder) {
  Create("TABLE");
  Create("ACTION");
  Create("TABLE");
  const auto registry = CRUXSection::m_svpHSection;
  EXPECT_EQ(registry,
            (std::vector<std::vector<CRUXSection*>*>{&CGSTABLE::m_sHeader, &CGSACTION::m_sHeader}));
  CRUXSection::Destory();
  EXPECT_EQ(CRUXSection::m_svpHSection, registry);
  EXPECT_TRUE(CGSTABLE::m_sHeader.empty());
  EXPECT_TRUE(CGSACTION::m_sHeader.empty());
  Create("ACTION");
  Create("SYSTEM");
  Create("TABLE");
  EXPECT_EQ(CRUXSection::m_svpHSection,
            (std::vector<std::vector<CRUXSection*>*>{&CGSTABLE::m_sHeader, &CGSACTION::m_sHeader,
                                                     &CGSSYSTEM::m_sHeader}));
}

TEST_F(SectionTest, DestoryKeepsTheFileTable) {
  Create("TABLE", "a.rux");
  CRUXSection::Destory();
  EXPECT_EQ(CRUXObj::m_svstrIncFiles, std::vector<std::string>{"a.rux"});
}

TEST_F(SectionTest, DeletingASectionLeavesItInItsList) {
  CRUXSection* section = &Create("TABLE");
  delete section;
  EXPECT_EQ(CGSTABLE::m_sHeader.size(), 1u);
  CGSTABLE::m_sHeader.clear();
}

}  // namespace
