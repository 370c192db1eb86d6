// Parsed values: the record of each type, and copies that keep to themselves.
#include <gtest/gtest.h>

#include "frontend/value_records.h"
#include "tests/unit/model_test.h"

using namespace ruxcomp::core;

namespace {

using GeValueTest = ModelTest;

// The fields of a record: T for a text, L for a list.
std::string ShapeOf(const CGeValue& value) {
  struct Shape {
    std::string shape;
    void operator()(std::string_view) { shape += 'T'; }
    void operator()(const TextList&) { shape += 'L'; }
  } shape;
  VisitValueFields(value.record(), shape);
  return shape.shape;
}

// All texts of a record, those of lists included, each followed by a bar.
std::string TextsOf(const CGeValue& value) {
  struct Texts {
    std::string texts;
    void operator()(std::string_view text) { (texts += text) += '|'; }
    void operator()(const TextList& list) {
      for (const std::string_view text : list) (*this)(text);
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
    Text Next() { return CRUXObj::m_arena.Add(letter + std::to_string(++count)); }
    void operator()(std::string_view& text) { text = Next(); }
    void operator()(TextList& list) {
      const std::string_view first = Next();
      list = CRUXObj::m_arena.Add({first, Next()});
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

TEST_F(GeValueTest, NewValueIsEmpty) {
  CGeValue value;
  EXPECT_EQ(value.GetType(), 0u);
  EXPECT_EQ(value.GetData(), nullptr);
  EXPECT_EQ(value.GetStrType(), "");
}

TEST_F(GeValueTest, CreateMakesTheEmptyRecordOfTheType) {
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

TEST_F(GeValueTest, OtherTypesHaveNoRecord) {
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

TEST_F(GeValueTest, FieldsHaveTheirNames) {
  CGeValue calculation(2, "VT");
  Fill(calculation, 'a');
  const auto& c = *static_cast<CalculationRecord*>(calculation.GetData());
  EXPECT_EQ(c.Operator, "a1");
  EXPECT_EQ(c.Operand1, "a2");
  EXPECT_EQ(c.Operand2, "a3");
  EXPECT_EQ(c.Operand3, "a4");
  EXPECT_EQ(c.Operand4, "a5");
  CGeValue call(3, "VT");
  Fill(call, 'a');
  EXPECT_EQ(static_cast<CallRecord*>(call.GetData())->Name, "a1");
  CGeValue bus(5, "VT");
  Fill(bus, 'a');
  const auto& b = *static_cast<BusArgsRecord*>(bus.GetData());
  EXPECT_EQ(b.Operand, "a1");
  EXPECT_EQ(b.Number, "a2");
  EXPECT_EQ(b.BusType, "a3");
  EXPECT_EQ(b.BaseAddress, "a4");
  ASSERT_EQ(b.Args.size(), 2u);
  EXPECT_EQ(b.Args[0], "a5");
  EXPECT_EQ(b.Args[1], "a6");
  CGeValue pair(6, "VT");
  Fill(pair, 'a');
  const auto& p = *static_cast<PairRecord*>(pair.GetData());
  EXPECT_EQ(p.First, "a1");
  EXPECT_EQ(p.Second, "a2");
  CGeValue cell(10, "VT");
  Fill(cell, 'a');
  const auto& t = *static_cast<CellRecord*>(cell.GetData());
  EXPECT_EQ(t.Table, "a1");
  EXPECT_EQ(t.Index, "a2");
}

TEST_F(GeValueTest, CopiesAreIndependent) {
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

TEST_F(GeValueTest, AssigningAValueToItselfChangesNothing) {
  CGeValue value(5, "VT");
  Fill(value, 's');
  const std::string texts = TextsOf(value);
  const CGeValue& itself = value;
  value = itself;
  EXPECT_EQ(value.GetType(), 5u);
  EXPECT_EQ(value.GetStrType(), "VT");
  EXPECT_EQ(TextsOf(value), texts);
}

TEST_F(GeValueTest, DestoryEmptiesAndCreateStartsAnew) {
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

TEST_F(GeValueTest, AssigningAnEmptyValueEmpties) {
  CGeValue value(5, "VT");
  value = CGeValue();
  EXPECT_EQ(value.GetType(), 0u);
  EXPECT_EQ(value.GetStrType(), "");
}

}  // namespace
