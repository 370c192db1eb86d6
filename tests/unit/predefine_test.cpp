// The defined words, and the sections that define them.
#include "frontend/defined_words.h"
#include "tests/unit/model_test.h"

using namespace ruxcomp::core;

namespace {

using Words = DefinedWords::Map;

using PredefineTest = ModelTest;

TEST_F(PredefineTest, LoadingDefinesNothing) { EXPECT_TRUE(g_tblPreDefine.words().empty()); }

TEST_F(PredefineTest, LaterValueReplacesTheEarlierOne) {
  AddPredDefineValue("A", 1);
  AddPredDefineValue("A", 2);
  std::uint32_t value = 0;
  EXPECT_EQ(GetPreDefinedValue("A", value), 1u);
  EXPECT_EQ(value, 2u);
  EXPECT_EQ(g_tblPreDefine.words().size(), 1u);
}

TEST_F(PredefineTest, UnknownWordLeavesTheValueAlone) {
  AddPredDefineValue("A", 1);
  for (const char* word : {"a", "AA", "", "A "}) {
    std::uint32_t value = 77;
    EXPECT_EQ(GetPreDefinedValue(word, value), 0u) << word;
    EXPECT_EQ(value, 77u);
  }
}

TEST_F(PredefineTest, ZeroIsAValue) {
  AddPredDefineValue("A", 0);
  std::uint32_t value = 77;
  EXPECT_EQ(GetPreDefinedValue("A", value), 1u);
  EXPECT_EQ(value, 0u);
}

TEST_F(PredefineTest, WordsAreKeptInByteOrder) {
  for (const char* word : {"b", "\xC3\xA4", "B", "a", "A1", "A"}) AddPredDefineValue(word, 0);
  std::vector<std::string> words;
  for (const auto& row : g_tblPreDefine.words()) words.push_back(row.first);
  EXPECT_EQ(words, (std::vector<std::string>{"A", "A1", "B", "a", "b", "\xC3\xA4"}));
}

TEST_F(PredefineTest, EndOfTheModelForgetsTheWords) {
  AddPredDefineValue("A", 1);
  CRUXSection::Destory();
  EXPECT_TRUE(g_tblPreDefine.words().empty());
}

TEST_F(PredefineTest, DefineItemIsANumberAndAWord) {
  CRUXSection& section = Create("DEFINE");
  EXPECT_EQ(section.SetEntry("board.rux", "A", "0x10", 4), 1u);
  EXPECT_EQ(section.SetEntry("board.rux", "B", "A", 5), 1u);
  ASSERT_EQ(section.entries.size(), 2u);
  for (const auto& entry : section.entries) {
    EXPECT_EQ(entry->identifier, 0x10010001u);
    EXPECT_EQ(entry->notation, 10u);
    EXPECT_EQ(entry->m_RuxEntryData.number(), 16u);
  }
  EXPECT_EQ(section.entries[1]->name, "B");
  EXPECT_EQ(section.entries[1]->line, 5u);
  EXPECT_EQ(g_tblPreDefine.words(), (Words{{"A", 16}, {"B", 16}}));
}

// The check of the whole model comes later and turns the parts once more.
TEST_F(PredefineTest, CheckWhileReadingKeepsTheParts) {
  CRUXSection& section = Create("DEFINE");
  section.SetEntry("board.rux", "A", "1", 4);
  EXPECT_EQ(TextsOf(section.entries[0]->ListItems()), (Texts{"1"}));
}

TEST_F(PredefineTest, DefineItemThatFailsItsCheckStaysInTheSection) {
  CRUXSection& section = Create("DEFINE");
  EXPECT_EQ(section.SetEntry("board.rux", "A", "", 4), 1u);
  EXPECT_EQ(section.SetEntry("board.rux", "1", "1", 5), 1u);
  EXPECT_EQ(section.entries.size(), 2u);
  EXPECT_TRUE(g_tblPreDefine.words().empty());
}

TEST_F(PredefineTest, IncludeItemIsAString) {
  CRUXSection& section = Create("INCLUDE");
  EXPECT_EQ(section.SetEntry("board.rux", "FILE", "none.rux", 4), 1u);
  EXPECT_EQ(section.SetEntry("board.rux", "OTHER", "none.rux", 5), 1u);
  ASSERT_EQ(section.entries.size(), 2u);
  for (const auto& entry : section.entries) {
    EXPECT_EQ(entry->identifier, 0x10020019u);
    EXPECT_EQ(entry->notation, 2u);
  }
  EXPECT_EQ(section.entries[0]->name, "FILE");
  EXPECT_EQ(*section.entries[0]->m_RuxEntryData.text(), "none.rux");
  EXPECT_EQ(section.entries[1]->name, "OTHER");
}

}  // namespace
