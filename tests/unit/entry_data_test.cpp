// The payload of an entry: made by type.
#include "frontend/entry_data.h"

#include <gtest/gtest.h>

#include "tests/unit/model_test.h"

using namespace ruxcomp::core;

namespace {

using EntryDataTest = ModelTest;

// Which of its kinds a payload is.
std::string KindsOf(const CRuxEntryData& data) {
  std::string kinds;
  if (data.number()) kinds += "number ";
  if (data.text()) kinds += "text ";
  if (data.list()) kinds += "list ";
  if (data.value()) kinds += "value ";
  if (data.repeater()) kinds += "repeater ";
  return kinds;
}

TEST_F(EntryDataTest, NewOneIsEmpty) {
  const CRuxEntryData data;
  EXPECT_EQ(data.GetType(), 0u);
  EXPECT_FALSE(data.HasData());
  EXPECT_EQ(KindsOf(data), "");
}

TEST_F(EntryDataTest, UpperBitsOfTheTypeSelectThePayload) {
  CRuxEntryData data(0x10010001);
  EXPECT_EQ(KindsOf(data), "number ");
  EXPECT_EQ(data.GetType(), 0x10010001u);
  data.Create(0x1002800C);
  EXPECT_EQ(KindsOf(data), "text ");
  EXPECT_EQ(*data.text(), "");
  EXPECT_STREQ(data.text()->c_str(), "");
  data.Create(0x10048001);
  EXPECT_EQ(KindsOf(data), "list ");
  EXPECT_TRUE(data.list()->empty());
  data.Create(0x10080008);
  EXPECT_EQ(KindsOf(data), "value ");
  EXPECT_EQ(data.value()->GetType(), 0u);
  EXPECT_EQ(data.value()->record().index(), 0u);
  data.Create(0x10100001);
  EXPECT_EQ(KindsOf(data), "repeater ");
  EXPECT_EQ(data.repeater()->Count, "");
  EXPECT_EQ(data.repeater()->Action, "");
  EXPECT_TRUE(data.repeater()->Args.empty());
  EXPECT_EQ(data.GetType(), 0x10100001u);
}

TEST_F(EntryDataTest, UnknownTypeIsKeptWithoutAPayload) {
  for (const std::uint32_t type :
       {0x10000001u, 0x10030001u, 0x10200001u, 0x20010001u, 0x00010001u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(type);
    const CRuxEntryData data(type);
    EXPECT_EQ(data.GetType(), type);
    EXPECT_FALSE(data.HasData());
    EXPECT_EQ(KindsOf(data), "");
  }
}

TEST_F(EntryDataTest, DestoryEmpties) {
  CRuxEntryData data(0x10020001);
  data.Destory();
  EXPECT_EQ(data.GetType(), 0u);
  EXPECT_FALSE(data.HasData());
}

TEST_F(EntryDataTest, HoldsWhatItIsGiven) {
  CRuxEntryData number(0x10010001);
  number.Set(7u);
  EXPECT_EQ(number.number(), 7u);
  CRuxEntryData text(0x10020015);
  text.Set(Text("ab", 2));
  EXPECT_EQ(*text.text(), "ab");
  const std::string_view parts[] = {"1", "2"};
  CRuxEntryData list(0x10048001);
  list.Set(TextList(parts, 2));
  ASSERT_EQ(list.list()->size(), 2u);
  EXPECT_EQ((*list.list())[1], "2");
  list.Set(TextList());
  EXPECT_TRUE(list.HasData());
  EXPECT_TRUE(list.list()->empty());
}

}  // namespace
