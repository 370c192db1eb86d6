// Filling an entry from an item of the script.
#include "frontend/entry.h"

#include "tests/unit/model_test.h"

using namespace ruxcomp::core;

namespace {

using EntryTest = ModelTest;

TEST_F(EntryTest, InitTakesPlaceNameAndParts) {
  CGESTRING entry(0x10020015, 1);
  entry.Init("a\\board.rux", InternedString("NAME"), "x,\"y,z\"", 12);
  EXPECT_EQ(entry.GetFile(0), "board.rux");
  EXPECT_EQ(entry.name, "NAME");
  EXPECT_EQ(entry.line, 12u);
  EXPECT_EQ(TextsOf(entry.ListItems()), (Texts{"x", "y,z"}));
  EXPECT_EQ(entry.m_RuxEntryData.GetType(), 0x10020015u);
  EXPECT_EQ(*entry.m_RuxEntryData.text(), "");
  EXPECT_EQ(entry.identifier, 0x10020015u);
  EXPECT_EQ(entry.notation, 1u);
}

TEST_F(EntryTest, EmptyTextHasNoParts) {
  CGESTRING entry(0x10020015, 1);
  entry.Init("board.rux", InternedString("NAME"), "", 1);
  EXPECT_EQ(TextsOf(entry.ListItems()), (Texts{}));
}

TEST_F(EntryTest, UnknownPayloadTypeIsToldAndTheItemKept) {
  CGESTRING entry(0x10990001, 1);
  entry.Init("board.rux", InternedString("NAME"), "x", 3);
  EXPECT_EQ(host::TakeMessages(),
            std::vector<std::string>{"CRUXEntry, m_RuxEntryData.Create(278462465) failed.\n"});
  EXPECT_EQ(entry.m_RuxEntryData.HasData(), false);
  EXPECT_EQ(entry.m_RuxEntryData.GetType(), 0x10990001u);
  EXPECT_EQ(entry.name, "NAME");
  EXPECT_EQ(entry.line, 3u);
  EXPECT_EQ(TextsOf(entry.ListItems()), (Texts{"x"}));
}

TEST_F(EntryTest, SecondPassOfANumberFindsNothingWrong) {
  CGEDWORD entry(0x10010001, 10);
  entry.Init("board.rux", InternedString("X"), "nothing", 1);
  EXPECT_EQ(entry.IsValidEx(Create("DEFINE"), 0), 1u);
}

}  // namespace
