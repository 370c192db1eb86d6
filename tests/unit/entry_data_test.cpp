// The payload of an entry: made by type, copied whole.
#include "frontend/entry_data.h"

#include <gtest/gtest.h>

using namespace ruxcomp::core;

namespace {

template <class Payload>
Payload& As(CRuxEntryData& data) {
  return *static_cast<Payload*>(data.GetData());
}

TEST(EntryDataTest, NewOneIsEmpty) {
  CRuxEntryData data;
  EXPECT_EQ(data.GetType(), 0u);
  EXPECT_EQ(data.GetData(), nullptr);
}

TEST(EntryDataTest, UpperBitsOfTheTypeTellThePayload) {
  CRuxEntryData data(0x10010001);
  EXPECT_EQ(data.GetData(), data.Get<std::uint32_t>());
  EXPECT_EQ(data.GetType(), 0x10010001u);
  data.Create(0x1002800C);
  EXPECT_EQ(As<std::string>(data), "");
  EXPECT_EQ(data.GetData(), data.Get<std::string>());
  data.Create(0x10048001);
  EXPECT_EQ(As<TextList>(data), TextList{});
  EXPECT_EQ(data.GetData(), data.Get<TextList>());
  data.Create(0x10080008);
  EXPECT_EQ(As<CGeValue>(data).GetType(), 0u);
  EXPECT_EQ(As<CGeValue>(data).GetData(), nullptr);
  EXPECT_EQ(data.GetData(), data.Get<CGeValue>());
  data.Create(0x10100001);
  EXPECT_EQ(As<RepeaterRecord>(data).Count + As<RepeaterRecord>(data).Action, "");
  EXPECT_EQ(As<RepeaterRecord>(data).Args, TextList{});
  EXPECT_EQ(data.GetData(), data.Get<RepeaterRecord>());
  EXPECT_EQ(data.GetType(), 0x10100001u);
}

TEST(EntryDataTest, UnknownTypeIsKeptWithoutAPayload) {
  for (const std::uint32_t type :
       {0x10000001u, 0x10030001u, 0x10200001u, 0x20010001u, 0x00010001u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(type);
    CRuxEntryData data(type);
    EXPECT_EQ(data.GetType(), type);
    EXPECT_EQ(data.GetData(), nullptr);
    const CRuxEntryData copy = data;
    EXPECT_EQ(copy.GetType(), type);
    EXPECT_FALSE(copy.HasData());
  }
}

TEST(EntryDataTest, DestoryEmpties) {
  CRuxEntryData data(0x10020001);
  data.Destory();
  EXPECT_EQ(data.GetType(), 0u);
  EXPECT_EQ(data.GetData(), nullptr);
}

TEST(EntryDataTest, CopiesOfANumberAreIndependent) {
  CRuxEntryData source(0x10010001);
  As<std::uint32_t>(source) = 7;
  CRuxEntryData copy = source;
  CRuxEntryData assigned(0x10020001);
  assigned = source;
  EXPECT_EQ(As<std::uint32_t>(copy), 7u);
  EXPECT_EQ(As<std::uint32_t>(assigned), 7u);
  EXPECT_EQ(assigned.GetType(), 0x10010001u);
  As<std::uint32_t>(copy) = 8;
  EXPECT_EQ(As<std::uint32_t>(source), 7u);
}

TEST(EntryDataTest, CopiesOfAStringAreIndependent) {
  CRuxEntryData source(0x10020015);
  As<std::string>(source) = "a";
  CRuxEntryData copy = source;
  As<std::string>(copy) += "b";
  EXPECT_EQ(As<std::string>(source), "a");
  EXPECT_EQ(As<std::string>(copy), "ab");
}

TEST(EntryDataTest, CopiesOfAListAreIndependent) {
  CRuxEntryData source(0x10048001);
  As<TextList>(source) = {"1", "2"};
  CRuxEntryData copy = source;
  As<TextList>(copy).push_back("3");
  EXPECT_EQ(As<TextList>(source), (TextList{"1", "2"}));
  EXPECT_EQ(As<TextList>(copy), (TextList{"1", "2", "3"}));
}

TEST(EntryDataTest, CopiesOfAValueAreIndependent) {
  CRuxEntryData source(0x10080000);
  As<CGeValue>(source).Create(7, "VT");
  static_cast<ListRecord*>(As<CGeValue>(source).GetData())->Args = {"1"};
  CRuxEntryData copy = source;
  EXPECT_EQ(As<CGeValue>(copy).GetStrType(), "VT");
  static_cast<ListRecord*>(As<CGeValue>(copy).GetData())->Args.push_back("2");
  EXPECT_EQ(static_cast<ListRecord*>(As<CGeValue>(source).GetData())->Args, TextList{"1"});
}

TEST(EntryDataTest, CopiesOfARepeaterAreIndependent) {
  CRuxEntryData source(0x10100001);
  As<RepeaterRecord>(source) = {"2", "act", {"1"}};
  CRuxEntryData copy = source;
  EXPECT_EQ(As<RepeaterRecord>(copy).Count, "2");
  EXPECT_EQ(As<RepeaterRecord>(copy).Action, "act");
  As<RepeaterRecord>(copy).Args.push_back("3");
  EXPECT_EQ(As<RepeaterRecord>(source).Args, TextList{"1"});
}

TEST(EntryDataTest, AssigningItToItselfChangesNothing) {
  CRuxEntryData data(0x10048001);
  As<TextList>(data) = {"1", "2"};
  const CRuxEntryData& itself = data;
  data = itself;
  EXPECT_EQ(data.GetType(), 0x10048001u);
  EXPECT_EQ(As<TextList>(data), (TextList{"1", "2"}));
}

}  // namespace
