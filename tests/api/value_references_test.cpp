// The second pass over value descriptions: what their parts refer to, and in which order it is
// reported.
#include "tests/api/sample_script.h"

namespace {

// The description under test is the entry G_X in line 2.
Section Value(const std::string& description) { return Section("GLOBAL").With("G_X", description); }

std::string Said(const std::string& text) {
  return "Error[board.rux:2]: [GLOBAL]:G_X, " + text + ".\n";
}
std::string NoNumber(const std::string& text) {
  return Said(text + " has not been defined and is not a valid number");
}
std::string NoArg(const std::string& text) { return Said("The ARG name " + text + " is invalid"); }

const std::string kTypes = Types();
const std::string kTwoArgs = Action().With("ARGNUMBER", "2");

class ValueReferenceTest : public CheckTest {
 protected:
  struct Row {
    const char* description;
    Lines expected;
  };

  void ExpectRejected(std::initializer_list<Row> rows, const std::string& rest = "") {
    for (const auto& [description, expected] : rows) {
      SCOPED_TRACE(description);
      EXPECT_EQ(Rejected({Value(description), rest, kTypes}), expected);
    }
  }

  void ExpectAccepted(std::initializer_list<const char*> descriptions,
                      const std::string& rest = "") {
    for (const char* description : descriptions) {
      SCOPED_TRACE(description);
      EXPECT_EQ(Accepted({Value(description), rest, kTypes}), Lines{});
    }
  }
};

TEST_F(ValueReferenceTest, CompleteDescriptionOfEachTypeIsAccepted) {
  ExpectAccepted({"T0",
                  "T1, 5",
                  "T2, +, 5, G_X",
                  "T2, ==, 1, 2, 3, T4",
                  "T3, action, 1, G_X",
                  "T4, G_X, 1, BUSTYPE_SMBUS, 0x10",
                  "T5, G_X, 1, BUSTYPE_SMBUS, G_X, 1",
                  "T6, 1, T2",
                  "T6, 1, 2, G_X",
                  "T7",
                  "T7, 1, G_X, 3, 4",
                  "T8, 1, 1, 1, 1",
                  "T9, 1, 1, 1, 1, 1",
                  "T10, table, G_X",
                  "T11, 1, 1, BUSTYPE_SMBUS, 0x00, 1",
                  "T12, 1, 1, BUSTYPE_SMBUS, 0x00",
                  "T13, NONE",
                  "T100, NONE",
                  "T105, NONE",
                  "T101, G_X",
                  "T102, 1, action, 1, 2",
                  "T103, 5"},
                 Script({kTwoArgs, Table()}));
  EXPECT_EQ(Accepted({Action().With("VALUE_1", "T104, VALUE_1"), kTypes}), Lines{});
}

TEST_F(ValueReferenceTest, OperandIsReadByItsPrefixAndLength) {
  const std::pair<const char*, std::string> rows[] = {
      {"VALUE_1", Said("The VALUE name VALUE_1 is not valid in this section")},
      {"ARG1", NoArg("ARG1")},
      {"ARGx", NoArg("ARGx")},
      {"G_Y", Said("The GLOBAL entry with NAME G_Y does not exist")},
      {"VALUE_", NoNumber("VALUE_")},
      {"VALUE", NoNumber("VALUE")},
      {"ARG", NoNumber("ARG")},
      {"G_", NoNumber("G_")},
      {"value_1", NoNumber("value_1")},
      {"arg1", NoNumber("arg1")},
      {"g_X", NoNumber("g_X")},
      {"\" G_X\"", NoNumber(" G_X")},
      {"t1", NoNumber("t1")},
  };
  for (const auto& [operand, message] : rows) {
    SCOPED_TRACE(operand);
    EXPECT_EQ(Rejected({Value(std::string("T1, ") + operand), kTypes}), Lines{message});
  }
  ExpectAccepted({"T1, G_X", "T1, ARG0", "T1, 0x10", "T1, T5", "T1, 12abc"});
}

TEST_F(ValueReferenceTest, DefinedWordDoesNotReplaceANameWithAPrefix) {
  const std::string words = Section("DEFINE")
                                .With("VALUE_1", "1")
                                .With("ARG1", "1")
                                .With("G_Y", "1")
                                .With("VALUE_", "1")
                                .With("ARG", "1")
                                .With("G_", "1")
                                .With("VALUE", "1");
  ExpectRejected({{"T1, VALUE_1", {Said("The VALUE name VALUE_1 is not valid in this section")}},
                  {"T1, ARG1", {NoArg("ARG1")}},
                  {"T1, G_Y", {Said("The GLOBAL entry with NAME G_Y does not exist")}}},
                 words);
  ExpectAccepted({"T1, VALUE_", "T1, ARG", "T1, G_", "T1, VALUE"}, words);
}

TEST_F(ValueReferenceTest, SingleOperandTypesCheckTheirText) {
  ExpectRejected({{"T1, A", {NoNumber("A")}},
                  {"T101, A", {NoNumber("A")}},
                  {"T103, A", {NoNumber("A")}},
                  {"T104, A", {Said("The VALUE name A is not valid in this section")}},
                  {"T104, 5", {Said("The VALUE name 5 is not valid in this section")}},
                  {"T104, \"\"", {Said("The VALUE name  is not valid in this section")}}});
}

TEST_F(ValueReferenceTest, OperandsOfAnOperatorAreCheckedInOrder) {
  ExpectRejected(
      {{"T2, pow, A, B", {NoNumber("A"), NoNumber("B")}},
       {"T2, !=, A, B, C, D", {NoNumber("A"), NoNumber("B"), NoNumber("C"), NoNumber("D")}}});
}

TEST_F(ValueReferenceTest, ArithmeticDoesNotLookAtSurplusSubStrings) {
  EXPECT_EQ(Accepted({Value("T2, +, 1, 2, A, B"), kTypes}),
            Lines{"Warning[board.rux:2]: [GLOBAL]:G_X, Too much sub-strings for value type T2.\n"});
}

TEST_F(ValueReferenceTest, CallChecksActionArgumentsAndTheirNumberInThisOrder) {
  ExpectRejected(
      {{"T3, none, A, ARG2",
        {Said("The ACTION with NAME none does not exist"), NoNumber("A"), NoArg("ARG2")}},
       {"T3, action, A, ARG3, G_Y",
        {NoNumber("A"), NoArg("ARG3"), Said("The GLOBAL entry with NAME G_Y does not exist"),
         "Error[board.rux:2]: [GLOBAL]:G_X The ACTION action needs 2 PARAMS, but total "
         "3 PARAMS here.\n"}},
       {"T3, action",
        {"Error[board.rux:2]: [GLOBAL]:G_X The ACTION action needs 2 PARAMS, but total "
         "0 PARAMS here.\n"}},
       {"T3, \"\"", {Said("The ACTION with NAME  does not exist")}}},
      kTwoArgs);
}

// The order of a bus description with nothing right in it: A, B, C, D and, in a list, E.
const Lines kWrongFields = {NoNumber("A"), NoNumber("D"), NoNumber("B"), NoNumber("C")};

Lines Joined(Lines first, const Lines& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

TEST_F(ValueReferenceTest, BusOperandsComeBeforeTheNumbersAndTheArguments) {
  const Lines with_args = Joined(kWrongFields, {NoNumber("E")});
  ExpectRejected({{"T4, A, B, C, D", kWrongFields},
                  {"T8, A, B, C, D", kWrongFields},
                  {"T5, A, B, C, D, E", with_args},
                  {"T9, A, B, C, D, E", with_args}});
}

TEST_F(ValueReferenceTest, NumberAndBusTypeAreNumbersOrWordsOnly) {
  ExpectRejected({{"T4, G_X, G_X, ARG0, G_X", {NoNumber("G_X"), NoNumber("ARG0")}},
                  {"T6, G_X, ARG0", {NoNumber("G_X"), NoNumber("ARG0")}}});
}

TEST_F(ValueReferenceTest, SmbusTestsComeFirst) {
  const Lines expected = Joined({"Error[board.rux:2]:SMBUS address field is wrong!\n",
                                 "Error[board.rux:2]: SMBUS type is wrong!\n"},
                                kWrongFields);
  ExpectRejected(
      {{"T12, A, B, C, D", expected}, {"T11, A, B, C, D, E", Joined(expected, {NoNumber("E")})}});
}

TEST_F(ValueReferenceTest, SmbusTestsDoNotChangeTheVerdict) {
  const std::string address = "Error[board.rux:2]:SMBUS address field is wrong!\n";
  const std::string type = "Error[board.rux:2]: SMBUS type is wrong!\n";
  const std::pair<const char*, Lines> rows[] = {
      {"BUSTYPE_SMBUS, 0x00", {}},         {"BUSTYPE_SMBUS, 0x0", {address}},
      {"BUSTYPE_SMBUS, 0", {address}},     {"BUSTYPE_SMBUS, 0X00", {address}},
      {"BUSTYPE_SMBUS, 0x10", {address}},  {"2, 0x00", {type}},
      {"\" 2\", \" 5\"", {address, type}}, {"BUSTYPE_SIMPLEIOPORT, 0x0", {address, type}},
  };
  for (const auto& [bus, expected] : rows) {
    SCOPED_TRACE(bus);
    EXPECT_EQ(Accepted({Value(std::string("T12, 1, 1, ") + bus), kTypes}), expected);
    EXPECT_EQ(Accepted({Value(std::string("T11, 1, 1, ") + bus + ", 1"), kTypes}), expected);
  }
  ExpectAccepted({"T4, 1, 1, 1, 5", "T5, 1, 1, 1, 5, 1", "T8, 1, 1, 1, 5", "T9, 1, 1, 1, 5, 1"});
}

TEST_F(ValueReferenceTest, PairChecksItsNumbersThenItsArguments) {
  ExpectRejected({{"T6, A, B, C, D", {NoNumber("A"), NoNumber("B"), NoNumber("C"), NoNumber("D")}},
                  {"T6, 1, 2, G_Y", {Said("The GLOBAL entry with NAME G_Y does not exist")}}});
}

TEST_F(ValueReferenceTest, ListKeepsFourElementsAndEachIsChecked) {
  ExpectRejected({{"T7, A, ARG1", {NoNumber("A"), NoArg("ARG1")}},
                  {"T7, A, B, C, D, E, F",
                   {"Warning[board.rux:2]: [GLOBAL]:G_X, Too much sub-strings for value type T7.\n",
                    NoNumber("A"), NoNumber("B"), NoNumber("C"), NoNumber("D")}}});
}

TEST_F(ValueReferenceTest, BusArgumentsAreAllKept) {
  ExpectRejected({{"T5, 1, 1, 1, 1, A, B, C",
                   {"Warning[board.rux:2]: [GLOBAL]:G_X, Too much sub-strings for value type T5.\n",
                    NoNumber("A"), NoNumber("B"), NoNumber("C")}}});
}

TEST_F(ValueReferenceTest, TableLookupChecksTableThenIndex) {
  ExpectRejected(
      {{"T10, none, A", {Said("The TABLE with NAME none does not exist"), NoNumber("A")}},
       {"T10, Table, 1", {Said("The TABLE with NAME Table does not exist")}}},
      Table());
}

TEST_F(ValueReferenceTest, OperandWithACallChecksOperandActionArgumentsAndTheirNumber) {
  ExpectRejected({{"T102, A, none, B, ARG1",
                   {NoNumber("A"), Said("The ACTION with NAME none does not exist"), NoNumber("B"),
                    NoArg("ARG1")}},
                  {"T102, A, action, B",
                   {NoNumber("A"), NoNumber("B"),
                    "Error[board.rux:2]: [GLOBAL]:G_X The ACTION action needs 2 PARAMS, but total "
                    "1 PARAMS here.\n"}}},
                 kTwoArgs);
}

TEST_F(ValueReferenceTest, ArgOfACallMayNotExceedTheNumberOfItsArgs) {
  ExpectAccepted({"T3, action, ARG1, ARG2", "T3, action, ARG2, ARG2", "T3, action, ARG0, 5",
                  "T3, action, ARG1, 5", "T3, action, ARG0x1, 5"},
                 kTwoArgs);
  ExpectRejected({{"T3, action, ARG3, ARG1", {NoArg("ARG3")}},
                  {"T3, action, ARG2, 5", {NoArg("ARG2")}},
                  {"T3, action, ARGx, ARG2", {NoArg("ARGx")}},
                  {"T3, action, ARG, ARG2", {NoNumber("ARG"), NoArg("ARG2")}},
                  {"T3, action, ARG1, ARG12345678901", {NoArg("ARG12345678901")}},
                  {"T3, action, ARG1, ARG-1", {NoArg("ARG-1")}}},
                 kTwoArgs);
}

TEST_F(ValueReferenceTest, ArgOutsideACallIsArgZeroOnly) {
  ExpectAccepted({"T1, ARG0", "T2, +, ARG0, ARG00", "T5, ARG0, 1, 1, ARG0, ARG0", "T6, 1, 1, ARG0",
                  "T7, ARG0, ARG0", "T102, ARG0, action, ARG0, ARG0"},
                 kTwoArgs);
  ExpectRejected({{"T5, 1, 1, 1, 1, ARG1", {NoArg("ARG1")}},
                  {"T6, 1, 1, ARG1, ARG2", {NoArg("ARG1"), NoArg("ARG2")}},
                  {"T102, 1, action, ARG1, 5", {NoArg("ARG1")}}},
                 kTwoArgs);
  ExpectRaise({Value("T1, ARG0x"), kTypes});
}

std::string NoArgInLine4(const std::string& name) {
  return "Error[board.rux:4]: [ACTION]:VALUE_1, The ARG name " + name + " is invalid.\n";
}

TEST_F(ValueReferenceTest, ArgInAnActionIsBoundByItsNumberOfArguments) {
  for (const char* value : {"T1, ARG0", "T1, ARG2", "T3, action, ARG1, ARG2", "T7, ARG1, ARG2"}) {
    SCOPED_TRACE(value);
    EXPECT_EQ(Accepted({Action().With("ARGNUMBER", "2").With("VALUE_1", value), kTypes}), Lines{});
  }
  for (const char* value : {"T1, ARG3", "T3, action, ARG3, ARG1", "T7, 1, ARG3"}) {
    SCOPED_TRACE(value);
    EXPECT_EQ(Rejected({Action().With("ARGNUMBER", "2").With("VALUE_1", value), kTypes}),
              Lines{NoArgInLine4("ARG3")});
  }
}

TEST_F(ValueReferenceTest, ArgInAnActionWithoutArgumentsIsArgZeroOnly) {
  EXPECT_EQ(Accepted({Action().With("VALUE_1", "T1, ARG0"), kTypes}), Lines{});
  EXPECT_EQ(Rejected({Action().With("VALUE_1", "T1, ARG1"), kTypes}),
            Lines{"Error[board.rux:3]: [ACTION]:VALUE_1, The ARG name ARG1 is invalid.\n"});
}

TEST_F(ValueReferenceTest, NoArgIsValidInAnActionWhoseNumberOfArgumentsIsAWord) {
  EXPECT_EQ(Rejected({Action().With("ARGNUMBER", "T2").With("VALUE_1", "T7, ARG0, ARG1"), kTypes}),
            (Lines{NoArgInLine4("ARG0"), NoArgInLine4("ARG1")}));
}

TEST_F(ValueReferenceTest, ValueNameIsANumberedValueOfTheSameAction) {
  const Section action =
      Action().With("VALUE_1", "T0").With("VALUE_2", "T0").With("VALUE_3", "T1, VALUE_2");
  EXPECT_EQ(Accepted({action, kTypes}), Lines{});
  EXPECT_EQ(Accepted({action.With("VALUE_3", "T104, VALUE_1"), kTypes}), Lines{});
  EXPECT_EQ(Accepted({action.With("VALUE", "T2, +, VALUE_3, VALUE_1"), kTypes}), Lines{});
  for (const char* name : {"VALUE_4", "VALUE_02", "VALUE_IPMI"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(
        Rejected({action.With("VALUE_3", std::string("T104, ") + name).With("VALUE_IPMI", "T0"),
                  Action().With("NAME", "other").With("VALUE_4", "T0"), kTypes}),
        (Lines{std::string("Error[board.rux:5]: [ACTION]:VALUE_3, The VALUE name ") + name +
               " is not valid in this section.\n"}));
  }
}

// Their values are under the other identifier of the keyword "VALUE_".
TEST_F(ValueReferenceTest, ValuesOfSensorsAndDevicesCannotBeNamed) {
  EXPECT_EQ(Rejected({Device().With("VALUE_1", "T0").With("VALUE_2", "T1, VALUE_1"), kTypes}),
            Lines{"Error[board.rux:7]: [DEVICE]:VALUE_2, The VALUE name VALUE_1 is not valid in "
                  "this section.\n"});
  EXPECT_EQ(Rejected({Sensor().With("VALUE", "T1, VALUE_1").With("VALUE_1", "T0"), Group(),
                      PelmGroup(), kTypes}),
            Lines{"Error[board.rux:8]: [SENSOR]:VALUE, The VALUE name VALUE_1 is not valid in this "
                  "section.\n"});
}

TEST_F(ValueReferenceTest, GlobalMayStandInAnyGlobalSection) {
  ExpectAccepted({"T1, G_Z"}, Script({Section("GLOBAL").With("G_Y", "T0"),
                                      Section("GLOBAL").With("G_A", "T0").With("G_Z", "T0")}));
}

TEST_F(ValueReferenceTest, ActionAndTableMayStandInAnySection) {
  ExpectAccepted(
      {"T3, action, 1, 2", "T10, table, 1"},
      Script({Action().With("NAME", "a"), kTwoArgs, Table().With("NAME", "t"), Table()}));
}

}  // namespace
