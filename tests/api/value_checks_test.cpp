// The first pass over value descriptions: the type, the number of sub-strings, the operator and the
// base address of a simple I/O port.
#include <set>

#include "ruxcomp/language/values.h"
#include "tests/api/sample_script.h"

namespace {

constexpr unsigned kUnbounded = 99;

// The description under test is the entry G_X in line 2.
Section Value(const std::string& description) { return Section("GLOBAL").With("G_X", description); }

// A type with so many sub-strings, itself included.
std::string Described(const std::string& type, unsigned count) {
  std::string description = type;
  for (unsigned i = 1; i < count; ++i) description += ", 0";
  return description;
}

class ValueTest : public CheckTest {
 protected:
  // The messages of the first pass alone; the refusal of a later section ends them.
  Lines FirstPass(const std::string& description) {
    Lines messages = Rejected({Value(description), kRefused, Types()});
    EXPECT_EQ(messages.back(), kRefusal);
    messages.pop_back();
    return messages;
  }

  // A count of sub-strings below `least` is an error, one above `most` gives a warning.
  void ExpectCounts(const std::string& type, const std::string& description, unsigned count,
                    unsigned least, unsigned most) {
    SCOPED_TRACE(description);
    Lines expected;
    if (count < least) {
      expected.push_back(
          "Error[board.rux:2]: [GLOBAL]:G_X, Not enough sub-strings for value type " + type +
          ".\n");
    } else if (count > most) {
      expected.push_back(
          "Warning[board.rux:2]: [GLOBAL]:G_X, Too much sub-strings for value type " + type +
          ".\n");
    }
    EXPECT_EQ(FirstPass(description), expected);
  }
};

TEST_F(ValueTest, EachTypeHasItsNumberOfSubStrings) {
  struct Row {
    const char* type;
    unsigned least, most;
  };
  const Row rows[] = {{"T0", 1, 1},           {"T1", 2, 2},
                      {"T101", 2, 2},         {"T103", 2, 2},
                      {"T104", 2, 2},         {"T3", 2, kUnbounded},
                      {"T4", 5, 5},           {"T8", 5, 5},
                      {"T12", 5, 5},          {"T5", 6, 6},
                      {"T9", 6, 6},           {"T11", 6, 6},
                      {"T6", 3, kUnbounded},  {"T102", 3, kUnbounded},
                      {"T7", 1, 5},           {"T10", 3, 3},
                      {"T13", 1, kUnbounded}, {"T100", 1, kUnbounded},
                      {"T105", 1, kUnbounded}};
  std::set<std::string> tried = {"T2"};  // further down
  for (const Row& row : rows) {
    tried.insert(row.type);
    for (unsigned count = 1; count <= 9; ++count) {
      ExpectCounts(row.type, Described(row.type, count), count, row.least, row.most);
    }
  }
  for (const auto& type : ruxcomp::language::kValueTypes) {
    EXPECT_EQ(tried.count("T" + std::to_string(type.code)), 1u) << type.code << " has no row";
  }
}

struct Operator {
  const char* text;
  std::uint32_t code;
};
const Operator kOperators[] = {{"+", 1},    {"-", 2},    {"*", 3},   {"/", 4},    {"|", 5},
                               {"&", 6},    {"%", 7},    {"^", 8},   {">>", 9},   {"<<", 10},
                               {"pow", 20}, {"==", 101}, {">", 102}, {">=", 103}, {"!=", 104},
                               {"<", 105},  {"<=", 106}};

TEST_F(ValueTest, ArithmeticTakesFourSubStringsAndAComparisonSix) {
  for (const auto& [text, code] : kOperators) {
    const unsigned required = code < 101 ? 4 : 6;
    for (unsigned count = 2; count <= 8; ++count) {
      const std::string description = Described(std::string("T2, ") + text, count - 1);
      ExpectCounts("T2", description, count, required, required);
    }
  }
  ExpectCounts("T2", "T2", 1, 4, 4);
}

TEST_F(ValueTest, OperatorCodesStandInTheCompiledValues) {
  Section globals("GLOBAL");
  for (const auto& [text, code] : kOperators) {
    const std::string operands = code < 101 ? ", 1, 1" : ", 1, 1, 1, 1";
    globals = globals.And("G_" + std::to_string(code), std::string("T2, ") + text + operands);
  }
  Compile(Script({globals, Types()}));
  ASSERT_EQ(gcInit(Path("board.meta")), 1u);
  const GCSECTION section = gcGetSectByIndex(RUX_SECT_GLOBAL, 0);
  for (const auto& [text, code] : kOperators) {
    SCOPED_TRACE(text);
    const GCENTRY entry = gcGetEntryByName(section, std::to_string(code), nullptr);
    EXPECT_EQ(gcGetValueByID(entry, RUX_SELECT_OPERATOR).data.number, code);
  }
  gcUnInit();
}

TEST_F(ValueTest, OperatorMustMatchExactly) {
  for (const std::string text : {"=", "POW", "pow2", "po", "=>", "=<", "<>", "!", "**", ">>>",
                                 "plus", "1", " +", "+ ", ""}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(
        Rejected({Value("T2, \"" + text + "\", 1, 1"), Types()}),
        (Lines{"Error[board.rux:2]: [GLOBAL]:G_X, Value:OPERATOR " + text + " is invalid.\n"}));
  }
}

TEST_F(ValueTest, UnknownOperatorIsCountedAsArithmeticFirst) {
  EXPECT_EQ(Rejected({Value("T2, ?, 1"), Types()}),
            Lines{"Error[board.rux:2]: [GLOBAL]:G_X, Not enough sub-strings for value type T2.\n"});
  EXPECT_EQ(Rejected({Value("T2, ?, 1, 1"), Types()}),
            Lines{"Error[board.rux:2]: [GLOBAL]:G_X, Value:OPERATOR ? is invalid.\n"});
  EXPECT_EQ(Rejected({Value("T2, ?, 1, 1, 1"), Types()}),
            (Lines{"Warning[board.rux:2]: [GLOBAL]:G_X, Too much sub-strings for value type T2.\n",
                   "Error[board.rux:2]: [GLOBAL]:G_X, Value:OPERATOR ? is invalid.\n"}));
}

TEST_F(ValueTest, ComparisonWithFourSubStringsIsTooShort) {
  EXPECT_EQ(Rejected({Value("T2, ==, 1, 1"), Types()}),
            Lines{"Error[board.rux:2]: [GLOBAL]:G_X, Not enough sub-strings for value type T2.\n"});
}

TEST_F(ValueTest, ValueWithoutASubStringHasNoType) {
  EXPECT_EQ(Rejected({Value("")}),
            Lines{"Error[board.rux:2]: [GLOBAL]:G_X, No value type sub-string.\n"});
}

TEST_F(ValueTest, TypeMustBeADefinedWord) {
  for (const std::string type : {"VT_NONE", "1", "0x1", "t1", "", " T1"}) {
    SCOPED_TRACE(type);
    EXPECT_EQ(Rejected({Value('"' + type + "\", 1"), Types()}),
              (Lines{"Error[board.rux:2]: [GLOBAL]:G_X, Value operator type(" + type +
                     ") is invalid.\n"}));
  }
}

TEST_F(ValueTest, AnyNumberMayBeAType) {
  const Section types =
      Section("DEFINE").With("VT_A", "0xFFFFFFFF").With("VT_B", "-2").With("VT_C", "107");
  for (const char* description : {"VT_A", "VT_B, x, y, z", "VT_C, , \"\", G_NONE, ARGx"}) {
    SCOPED_TRACE(description);
    EXPECT_EQ(Accepted({Value(description), types}), Lines{});
  }
}

TEST_F(ValueTest, EveryKindOfValueEntryIsChecked) {
  const Section group = Group()
                            .With("VALUE_INIT", "A")
                            .With("VALUE_DEINIT", "B")
                            .With("VALUE_ENTRY", "C")
                            .With("VALUE_EXIT", "D");
  EXPECT_EQ(
      Rejected({group}),
      (Lines{"Error[board.rux:5]: [GROUP]:VALUE_INIT, Value operator type(A) is invalid.\n",
             "Error[board.rux:6]: [GROUP]:VALUE_DEINIT, Value operator type(B) is invalid.\n",
             "Error[board.rux:7]: [GROUP]:VALUE_ENTRY, Value operator type(C) is invalid.\n",
             "Error[board.rux:8]: [GROUP]:VALUE_EXIT, Value operator type(D) is invalid.\n"}));
  EXPECT_EQ(Rejected({Sensor().With("VALUE", "A").With("VALUE_IPMI", "B").With("VALUE_X", "C")}),
            (Lines{"Error[board.rux:8]: [SENSOR]:VALUE, Value operator type(A) is invalid.\n",
                   "Error[board.rux:9]: [SENSOR]:VALUE_IPMI, Value operator type(B) is invalid.\n",
                   "Error[board.rux:10]: [SENSOR]:VALUE_X, Value operator type(C) is invalid.\n"}));
  EXPECT_EQ(Rejected({Device().With("VALUE_X", "A"), Action().With("VALUE_1", "B")}),
            (Lines{"Error[board.rux:6]: [DEVICE]:VALUE_X, Value operator type(A) is invalid.\n",
                   "Error[board.rux:9]: [ACTION]:VALUE_1, Value operator type(B) is invalid.\n"}));
}

// Values with the four bus fields; the part after the base address completes the list types.
struct BusType {
  const char* type;
  const char* args;
};
const BusType kBusTypes[] = {{"T4", ""},    {"T8", ""},    {"T12", ""},
                             {"T5", ", 0"}, {"T9", ", 0"}, {"T11", ", 0"}};

TEST_F(ValueTest, SimpleIoPortTakesTheBaseAddressZeroOnly) {
  for (const auto& [type, args] : kBusTypes) {
    const std::string begin = std::string(type) + ", 0, 0, BUSTYPE_SIMPLEIOPORT, ";
    for (const char* zero : {"0", "0x0", "0x00", "00", "0abc"}) {
      SCOPED_TRACE(begin + zero);
      EXPECT_EQ(FirstPass(begin + zero + args), Lines{});
    }
    for (const std::string base : {"0x10", "1", "x", "-0", "T0", "G_X", "00000000000"}) {
      SCOPED_TRACE(begin + base);
      EXPECT_EQ(FirstPass(begin + base + args),
                (Lines{"Error[board.rux:2]: [GLOBAL]:G_X, The BaseAddress " + base +
                       " of BUSTYPE_SIMPLEIOPORT must be 0.\n"}));
    }
    ExpectRaise({Value(begin + "\"\"" + args), Types()});
    ExpectRaise({Value(begin + "0x" + args), Types()});
  }
}

TEST_F(ValueTest, SimpleIoPortIsJudgedAfterTheCount) {
  EXPECT_EQ(Rejected({Value("T4, 0, 0, BUSTYPE_SIMPLEIOPORT, 1, 0"), Types()}),
            (Lines{"Warning[board.rux:2]: [GLOBAL]:G_X, Too much sub-strings for value type T4.\n",
                   "Error[board.rux:2]: [GLOBAL]:G_X, The BaseAddress 1 of BUSTYPE_SIMPLEIOPORT "
                   "must be 0.\n"}));
  EXPECT_EQ(Rejected({Value("T5, 0, 0, BUSTYPE_SIMPLEIOPORT, 1"), Types()}),
            Lines{"Error[board.rux:2]: [GLOBAL]:G_X, Not enough sub-strings for value type T5.\n"});
}

TEST_F(ValueTest, OtherBusTypesTakeAnyBaseAddress) {
  for (const char* bus :
       {"BUSTYPE_SMBUS", "bustype_simpleioport", "1", "\" BUSTYPE_SIMPLEIOPORT\""}) {
    SCOPED_TRACE(bus);
    EXPECT_EQ(FirstPass(std::string("T4, 0, 0, ") + bus + ", 0x10"), Lines{});
  }
  EXPECT_EQ(Accepted({Value("T6, BUSTYPE_SIMPLEIOPORT, 1, 0x10"), Types()}), Lines{});
}

TEST_F(ValueTest, SurplusSubStringsAreDroppedExceptByTheBusTypesWithAList) {
  const std::pair<const char*, bool> rows[] = {
      {"T0", false},
      {"T1, 1", false},
      {"T2, +, 1, 1", false},
      {"T2, ==, 1, 1, 1, 1", false},
      {"T4, 1, 1, 1, 1", false},
      {"T7, 1, 1, 1, 1", false},
      {"T10, table, 1", false},
      {"T5, 1, 1, 1, 1, 1", true},
      {"T9, 1, 1, 1, 1, 1", true},
      {"T11, 1, 1, BUSTYPE_SMBUS, 0x00, 1", true},
  };
  for (const auto& [description, kept] : rows) {
    SCOPED_TRACE(description);
    const std::string with_surplus = std::string(description) + ", 0SURPLUS";
    const std::string type = with_surplus.substr(0, with_surplus.find(','));
    EXPECT_EQ(Check(Script({Value(with_surplus), Table(), Types()}), 1),
              (Lines{"Warning[board.rux:2]: [GLOBAL]:G_X, Too much sub-strings for value type " +
                     type + ".\n"}));
    ASSERT_EQ(gccOutputD(Path("board.metad")), 1u);
    EXPECT_EQ(ReadAll("board.metad").find("0SURPLUS") != std::string::npos, kept);
    gccCompEnd();
  }
}

// A second check of the same model shows what the first one left of the sub-strings.
TEST_F(ValueTest, SubStringsAreKeptWhenThereAreNotEnough) {
  const std::string no_type = "Error[board.rux:2]: [GLOBAL]:G_X, No value type sub-string.\n";
  const std::string not_enough =
      "Error[board.rux:2]: [GLOBAL]:G_X, Not enough sub-strings for value type T4.\n";
  const std::pair<const char*, std::string> rows[] = {
      {"T4, 0", not_enough},       {"VT_NONE", no_type},
      {"T2, ?, 0, 0", no_type},    {"T4, 0, 0, BUSTYPE_SIMPLEIOPORT, 1", no_type},
      {"T4, 0, 0, 0, 0", no_type},
  };
  for (const auto& [description, second_message] : rows) {
    SCOPED_TRACE(description);
    Parse(Script({Value(description), Types()}));
    gccCheck();
    host::TakeMessages();
    EXPECT_EQ(gccCheck(), 0u);
    EXPECT_EQ(host::TakeMessages().front(), second_message);
    gccCompEnd();
  }
}

}  // namespace
