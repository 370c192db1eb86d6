// The condition of an IFDEF section.
#include "frontend/defined_words.h"
#include "frontend/section_kinds.h"
#include "tests/unit/model_test.h"

using namespace ruxcomp::core;

namespace {

using Words = DefinedWords::Map;

class IfdefTest : public ModelTest {
 protected:
  CGSIFDEF& section = dynamic_cast<CGSIFDEF&>(Create("IFDEF"));
};

TEST_F(IfdefTest, NewSectionHasSeenNothing) {
  EXPECT_EQ(section.ifdefSeen, 0u);
  EXPECT_EQ(section.ifdefResult, 0u);
}

TEST_F(IfdefTest, ConditionHoldsForADefinedWord) {
  AddPredDefineValue("A", 0);
  EXPECT_EQ(section.SetEntry("board.rux", "DEFINEWORD", "A", 2), 1u);
  EXPECT_EQ(section.ifdefSeen, 1u);
  EXPECT_EQ(section.ifdefResult, 1u);
  EXPECT_EQ(section.entries.size(), 1u);
  EXPECT_EQ(*section.entries[0]->m_RuxEntryData.text(), "A");
}

TEST_F(IfdefTest, ConditionFailsForAnUndefinedWord) {
  AddPredDefineValue("A", 1);
  EXPECT_EQ(section.SetEntry("board.rux", "DEFINEWORD", "a", 2), 1u);
  EXPECT_EQ(section.ifdefSeen, 1u);
  EXPECT_EQ(section.ifdefResult, 0u);
}

TEST_F(IfdefTest, ConditionFailsWhenTheFirstItemIsAnother) {
  AddPredDefineValue("A", 1);
  EXPECT_EQ(section.SetEntry("board.rux", "A", "A", 2), 1u);
  EXPECT_EQ(section.ifdefSeen, 1u);
  EXPECT_EQ(section.ifdefResult, 0u);
  EXPECT_EQ(section.entries.size(), 1u);
  EXPECT_EQ(section.entries[0], nullptr);
  EXPECT_EQ(host::TakeMessages(), std::vector<std::string>{});
}

TEST_F(IfdefTest, ConditionFailsWhenItsCheckDoes) {
  AddPredDefineValue("", 1);
  EXPECT_EQ(section.SetEntry("board.rux", "DEFINEWORD", "\"\"", 2), 1u);
  EXPECT_EQ(section.ifdefSeen, 1u);
  EXPECT_EQ(section.ifdefResult, 0u);
}

TEST_F(IfdefTest, SecondItemIsTheFirstDefinition) {
  section.SetEntry("board.rux", "LOST", "1", 2);
  EXPECT_EQ(section.SetEntry("board.rux", "A", "5", 3), 1u);
  EXPECT_EQ(g_tblPreDefine.words(), (Words{{"A", 5}}));
  ASSERT_EQ(section.entries.size(), 2u);
  EXPECT_EQ(section.entries[1]->identifier, 0x10010001u);
  EXPECT_EQ(section.entries[1]->notation, 10u);
  EXPECT_EQ(section.entries[1]->name, "A");
}

TEST_F(IfdefTest, LaterItemsDoNotChangeTheCondition) {
  section.SetEntry("board.rux", "DEFINEWORD", "A", 2);
  EXPECT_EQ(section.SetEntry("board.rux", "A", "1", 3), 1u);
  EXPECT_EQ(section.SetEntry("board.rux", "DEFINEWORD", "2", 4), 1u);
  EXPECT_EQ(section.ifdefResult, 0u);
  EXPECT_EQ(g_tblPreDefine.words(), (Words{{"A", 1}, {"DEFINEWORD", 2}}));
}

}  // namespace
