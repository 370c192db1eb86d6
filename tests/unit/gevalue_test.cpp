// Parsed values: the record of each type, and copies that keep to themselves.
#include <gtest/gtest.h>

#include "frontend/value_records.h"

using namespace ruxcomp::core;

namespace {

// The fields of a record: T for a text, L for a list.
std::string ShapeOf(const CGeValue& value) {
  struct Shape {
    std::string shape;
    void operator()(const std::string&) { shape += 'T'; }
    void operator()(const TextList&) { shape += 'L'; }
  } shape;
  VisitValueFields(value.record(), shape);
  return shape.shape;
}

// All texts of a record, those of lists included, each followed by a bar.
std::string TextsOf(const CGeValue& value) {
  struct Texts {
    std::string texts;
    void operator()(const std::string& text) { texts += text + "|"; }
    void operator()(const TextList& list) {
      for (const std::string& text : list) texts += text + "|";
    }
  } texts;
  VisitValueFields(value.record(), texts);
  return texts.texts;
}

// Numbers the fields with the given letter; a list gets two elements.
void Fill(CGeValue& value, char letter) {
  struct Filler {
    char letter;
    int count = 0;
    std::string Next() { return letter + std::to_string(++count); }
    void operator()(std::string& text) { text = Next(); }
    void operator()(TextList& list) {
      list.clear();
      for (int i = 0; i < 2; ++i) list.push_back(Next());
    }
  } filler{letter};
  VisitValueFields(value.record(), filler);
}

struct TypeRow {
  std::uint32_t code;
  const char* shape;
};

constexpr TypeRow kTypes[] = {{0, ""},      {1, "T"},      {2, "TTTTT"}, {3, "TL"},   {4, "TTTT"},
                              {5, "TTTTL"}, {6, "TTL"},    {7, "L"},     {8, "TTTT"}, {9, "TTTTL"},
                              {10, "TT"},   {11, "TTTTL"}, {12, "TTTT"}, {101, "T"},  {102, "TTL"},
                              {103, "T"},   {104, "T"}};

constexpr std::uint32_t kTypesWithoutRecord[] = {13, 14, 50, 99, 100, 105, 106, 255, 0xFFFFFFFF};

TEST(GeValueTest, NewValueIsEmpty) {
  CGeValue value;
  EXPECT_EQ(value.GetType(), 0u);
  EXPECT_EQ(value.GetData(), nullptr);
  EXPECT_EQ(value.GetStrType(), "");
}

TEST(GeValueTest, CreateMakesTheEmptyRecordOfTheType) {
  for (const TypeRow& row : kTypes) {
    SCOPED_TRACE(row.code);
    CGeValue value(row.code, "VT");
    EXPECT_EQ(value.GetType(), row.code);
    EXPECT_EQ(value.GetStrType(), "VT");
    EXPECT_NE(value.GetData(), nullptr);
    EXPECT_EQ(ShapeOf(value), row.shape);
    EXPECT_EQ(TextsOf(value).find_first_not_of('|'), std::string::npos);
  }
}

TEST(GeValueTest, OtherTypesHaveNoRecord) {
  for (const std::uint32_t code : kTypesWithoutRecord) {
    SCOPED_TRACE(code);
    CGeValue value(code, "VT");
    EXPECT_EQ(value.GetType(), code);
    EXPECT_EQ(value.GetStrType(), "VT");
    EXPECT_EQ(value.GetData(), nullptr);
    const CGeValue copy = value;
    EXPECT_EQ(copy.GetType(), code);
    EXPECT_EQ(copy.GetStrType(), "VT");
  }
}

TEST(GeValueTest, FieldsHaveTheirNames) {
  CGeValue calculation(2, "VT");
  Fill(calculation, 'a');
  const auto& c = *static_cast<CalculationRecord*>(calculation.GetData());
  EXPECT_EQ(c.Operator + c.Operand1 + c.Operand2 + c.Operand3 + c.Operand4, "a1a2a3a4a5");
  CGeValue call(3, "VT");
  Fill(call, 'a');
  EXPECT_EQ(static_cast<CallRecord*>(call.GetData())->Name, "a1");
  CGeValue bus(5, "VT");
  Fill(bus, 'a');
  const auto& b = *static_cast<BusArgsRecord*>(bus.GetData());
  EXPECT_EQ(b.Operand + b.Number + b.BusType + b.BaseAddress, "a1a2a3a4");
  EXPECT_EQ(b.Args, (TextList{"a5", "a6"}));
  CGeValue pair(6, "VT");
  Fill(pair, 'a');
  const auto& p = *static_cast<PairRecord*>(pair.GetData());
  EXPECT_EQ(p.First + p.Second, "a1a2");
  CGeValue cell(10, "VT");
  Fill(cell, 'a');
  const auto& t = *static_cast<CellRecord*>(cell.GetData());
  EXPECT_EQ(t.Table + t.Index, "a1a2");
}

TEST(GeValueTest, CopiesAreIndependent) {
  for (const TypeRow& row : kTypes) {
    SCOPED_TRACE(row.code);
    CGeValue source(row.code, "VT");
    Fill(source, 's');
    const std::string texts = TextsOf(source);
    CGeValue constructed = source;
    CGeValue assigned(3, "OTHER");
    assigned = source;
    for (CGeValue* copy : {&constructed, &assigned}) {
      EXPECT_EQ(copy->GetType(), row.code);
      EXPECT_EQ(copy->GetStrType(), "VT");
      EXPECT_NE(copy->GetData(), source.GetData());
      EXPECT_EQ(TextsOf(*copy), texts);
      Fill(*copy, 'c');
    }
    EXPECT_EQ(TextsOf(source), texts);
  }
}

TEST(GeValueTest, ChangingTheArgumentsOfACopyLeavesTheSourceAlone) {
  CGeValue source(5, "VT");
  static_cast<BusArgsRecord*>(source.GetData())->Args = {"1", "2"};
  CGeValue copy = source;
  static_cast<BusArgsRecord*>(copy.GetData())->Args.push_back("3");
  EXPECT_EQ(static_cast<BusArgsRecord*>(source.GetData())->Args, (TextList{"1", "2"}));
  EXPECT_EQ(static_cast<BusArgsRecord*>(copy.GetData())->Args, (TextList{"1", "2", "3"}));
}

TEST(GeValueTest, AssigningAValueToItselfChangesNothing) {
  CGeValue value(5, "VT");
  Fill(value, 's');
  const std::string texts = TextsOf(value);
  const CGeValue& itself = value;
  value = itself;
  EXPECT_EQ(value.GetType(), 5u);
  EXPECT_EQ(value.GetStrType(), "VT");
  EXPECT_EQ(TextsOf(value), texts);
}

TEST(GeValueTest, DestoryEmptiesAndCreateStartsAnew) {
  CGeValue value(5, "VT");
  Fill(value, 's');
  value.Destory();
  EXPECT_EQ(value.GetType(), 0u);
  EXPECT_EQ(value.GetData(), nullptr);
  EXPECT_EQ(value.GetStrType(), "");
  value.Create(1, "VU");
  EXPECT_EQ(value.GetType(), 1u);
  EXPECT_EQ(value.GetStrType(), "VU");
  EXPECT_EQ(TextsOf(value), "|");
}

TEST(GeValueTest, AssigningAnEmptyValueEmpties) {
  CGeValue value(5, "VT");
  value = CGeValue();
  EXPECT_EQ(value.GetType(), 0u);
  EXPECT_EQ(value.GetStrType(), "");
}

}  // namespace
