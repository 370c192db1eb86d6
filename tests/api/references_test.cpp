// The second pass over strings, lists and repeaters: what their names and numbers refer to.
#include "tests/api/sample_script.h"

namespace {

using ReferenceTest = CheckTest;

const std::string kGroup = Group();
const std::string kPelmGroup = PelmGroup();
const std::string kTypes = Types();

TEST_F(ReferenceTest, ParentOfASensorIsAGroup) {
  // The groups may be before or after it.
  EXPECT_EQ(Accepted({Sensor(), Group().With("NAME", "other"), kGroup, kPelmGroup, kTypes}),
            Lines{});
  for (const char* parent : {"none", "Group", "grou", "0"}) {
    SCOPED_TRACE(parent);
    EXPECT_EQ(Rejected({Sensor().With("PARENT", parent), kGroup, kPelmGroup, kTypes}),
              (Lines{std::string("Error[board.rux:2]: [SENSOR]:PARENT, Parent GROUP ") + parent +
                     " does not exist.\n"}));
  }
}

TEST_F(ReferenceTest, ParentOfASensorMayBeAGroupNamedZero) {
  EXPECT_EQ(Accepted({Sensor().With("PARENT", "0"), Group().With("NAME", "0"), kPelmGroup, kTypes}),
            Lines{});
}

TEST_F(ReferenceTest, ParentOfAGroupIsZeroOrAGroup) {
  EXPECT_EQ(Accepted({kGroup, Group().With("PARENT", "group").With("NAME", "child")}), Lines{});
  EXPECT_EQ(Rejected({Group().With("PARENT", "00")}),
            (Lines{"Error[board.rux:1]: Parent of this group hasn't been defined.\n",
                   "Error[board.rux:2]: [GROUP]:PARENT, Parent GROUP 00 does not exist.\n"}));
}

TEST_F(ReferenceTest, PidZeroNeedsNoPelmGroup) {
  for (const char* zero : {"0", "0x0", "00", "0abc", "T0"}) {
    SCOPED_TRACE(zero);
    EXPECT_EQ(Accepted({PelmGroup().With("PID", zero).With("SENSORS", ""), kTypes}), Lines{});
  }
}

TEST_F(ReferenceTest, PidIsTheNumberOfAPelmGroup) {
  const Section child = PelmGroup().With("SENSORS", "").With("NAME", "child").With("ID", "7");
  const Section parent = PelmGroup().With("SENSORS", "").With("ID", "0x10");
  for (const char* pid : {"16", "0x10", "+16", "16th", "SIXTEEN", "7"}) {
    SCOPED_TRACE(pid);
    EXPECT_EQ(Accepted({child.With("PID", pid), parent, Section("DEFINE").With("SIXTEEN", "16")}),
              Lines{});
  }
  for (const char* id : {"1", "T2"}) {
    SCOPED_TRACE(id);
    EXPECT_EQ(Rejected({child.With("PID", id), parent, kTypes}),
              (Lines{std::string("Error[board.rux:4]: [PELMGROUP]:PID, Parent PELMGROUP with ID ") +
                     id + " does not exist.\n"}));
  }
  EXPECT_EQ(Accepted({child.With("PID", "2"), parent.With("ID", "T2"), kTypes}), Lines{});
}

TEST_F(ReferenceTest, SensorStandsInTheListOfAPelmGroup) {
  const Section other = PelmGroup().With("NAME", "other").With("ID", "2").With("SENSORS", "");
  for (const char* sensors : {"1", "0x1", "1st", "T1", "\" 1\"", "+1"}) {
    SCOPED_TRACE(sensors);
    EXPECT_EQ(Accepted({Sensor(), kGroup, other, PelmGroup().With("SENSORS", sensors), kTypes}),
              Lines{});
  }
  EXPECT_EQ(Accepted({Sensor().With("ID", "T1"), kGroup, other, kPelmGroup, kTypes}), Lines{});
  EXPECT_EQ(Rejected({Sensor(), kGroup, other, kTypes}),
            Lines{"Error[board.rux:4]: [SENSOR]:ID, The parent PELMGROUP of SENSOR with ID 1 does "
                  "not exist.\n"});
  EXPECT_EQ(Rejected({Sensor().With("ID", "T1"), kGroup, kTypes}),
            Lines{"Error[board.rux:4]: [SENSOR]:ID, The parent PELMGROUP of SENSOR with ID T1 does "
                  "not exist.\n"});
}

TEST_F(ReferenceTest, SensorZeroNeedsAPelmGroupToo) {
  EXPECT_EQ(Rejected({Sensor().With("ID", "0"), kGroup, kTypes}),
            Lines{"Error[board.rux:4]: [SENSOR]:ID, The parent PELMGROUP of SENSOR with ID 0 does "
                  "not exist.\n"});
  EXPECT_EQ(Accepted({Sensor().With("ID", "0"), kGroup, PelmGroup().With("SENSORS", "T0"), kTypes}),
            Lines{});
}

TEST_F(ReferenceTest, IdsOfOtherSectionsReferToNothing) {
  EXPECT_EQ(Accepted({Device(), PelmGroup().With("SENSORS", "")}), Lines{});
}

TEST_F(ReferenceTest, EveryElementOfSensorsIsTheIdOfASensor) {
  EXPECT_EQ(Accepted({PelmGroup().With("SENSORS", "T2, 0x1"), kGroup, Sensor(),
                      Sensor().With("NAME", "second").With("ID", "2"), kTypes}),
            Lines{});
  EXPECT_EQ(
      Rejected({PelmGroup().With("SENSORS", "3, 1, T4, NONE, 0"), kGroup, Sensor(), kTypes}),
      (Lines{"Error[board.rux:5]: [PELMGROUP]:SENSORS, The SENSOR with ID 3 does not exist.\n",
             "Error[board.rux:5]: [PELMGROUP]:SENSORS, The SENSOR with ID T4 does not exist.\n",
             "Error[board.rux:5]: [PELMGROUP]:SENSORS, The SENSOR with ID NONE does not exist.\n",
             "Error[board.rux:5]: [PELMGROUP]:SENSORS, The SENSOR with ID 0 does not exist.\n"}));
}

// In particular it is not the sensor 0.
TEST_F(ReferenceTest, ElementThatIsNoNumberIsNoSensor) {
  EXPECT_EQ(
      Rejected({PelmGroup().With("SENSORS", "NONE"), kGroup, Sensor().With("ID", "0"), kTypes}),
      (Lines{"Error[board.rux:5]: [PELMGROUP]:SENSORS, The SENSOR with ID NONE does not exist.\n",
             "Error[board.rux:13]: [SENSOR]:ID, The parent PELMGROUP of SENSOR with ID 0 does not "
             "exist.\n"}));
}

TEST_F(ReferenceTest, EmptyElementOfSensorsRaises) {
  ExpectRaise({PelmGroup().With("SENSORS", "1, , 1"), kGroup, Sensor(), kTypes});
}

// The repeater is in line 2.
Section Repeater(const std::string& value) { return Section("REPEATER").With("R", value); }

const std::string kTwoArgs = Action().With("ARGNUMBER", "2");

TEST_F(ReferenceTest, RepeaterCallsAnActionWithItsNumberOfArguments) {
  const std::string global = Section("GLOBAL").With("G_X", "T0");
  for (const char* value : {"1, action, 1, 2", "T5, action, T1, 0x2", "G_X, action, G_X, ARG1"}) {
    SCOPED_TRACE(value);
    EXPECT_EQ(Accepted({Repeater(value), kTwoArgs, global, kTypes}), Lines{});
  }
  EXPECT_EQ(Accepted({Repeater("1, action"), Action()}), Lines{});
}

TEST_F(ReferenceTest, RepeaterReportsActionCountArgumentsAndTheirNumberInThisOrder) {
  EXPECT_EQ(Rejected({Repeater("A, none, B, G_Y, ARGx, C")}),
            (Lines{"Error[board.rux:2]: [REPEATER]:R, The ACTION with NAME none does not exist.\n",
                   "Error[board.rux:2]: [REPEATER]:R, A has not been defined and is not a valid "
                   "number.\n",
                   "Error[board.rux:2]: [REPEATER]:R, B has not been defined and is not a valid "
                   "number.\n",
                   "Error[board.rux:2]: [REPEATER]:R, The GLOBAL entry with NAME G_Y does not "
                   "exist.\n",
                   "Error[board.rux:2]: [REPEATER]:R, C has not been defined and is not a valid "
                   "number.\n"}));
  EXPECT_EQ(
      Rejected({Repeater("G_Y, action, B"), kTwoArgs}),
      (Lines{"Error[board.rux:2]: [REPEATER]:R, The GLOBAL entry with NAME G_Y does not exist.\n",
             "Error[board.rux:2]: [REPEATER]:R, B has not been defined and is not a valid "
             "number.\n",
             "Error[board.rux:2]: [REPEATER]:R The ACTION action needs 2 PARAMS, but total 1 "
             "PARAMS here.\n"}));
}

TEST_F(ReferenceTest, RepeaterDoesNotLookAtArgArguments) {
  EXPECT_EQ(Accepted({Repeater("1, action, ARG99, ARGx"), kTwoArgs}), Lines{});
  EXPECT_EQ(Accepted({Repeater("1, action, ARG0x, ARG-1"), kTwoArgs}), Lines{});
}

// As a count, an ARG is none; as an argument it is one from its fourth character on.
TEST_F(ReferenceTest, RepeaterTakesWhatIsNoGlobalForANumber) {
  const std::pair<const char*, Section> rows[] = {
      {"G_", Repeater("G_, action, 1, 2")},          {"ARG", Repeater("ARG, action, 1, 2")},
      {"ARG1", Repeater("ARG1, action, 1, 2")},      {"VALUE_1", Repeater("VALUE_1, action, 1, 2")},
      {"G_", Repeater("1, action, 1, G_")},          {"ARG", Repeater("1, action, ARG, 2")},
      {"VALUE_1", Repeater("1, action, VALUE_1, 2")}};
  for (const auto& [text, repeater] : rows) {
    SCOPED_TRACE(std::string(repeater));
    EXPECT_EQ(Rejected({repeater, kTwoArgs}),
              (Lines{std::string("Error[board.rux:2]: [REPEATER]:R, ") + text +
                     " has not been defined and is not a valid number.\n"}));
  }
}

TEST_F(ReferenceTest, RepeaterWithAnEmptyPartRaisesUnlessItIsTheAction) {
  ExpectRaise({Repeater(", action"), Action()});
  ExpectRaise({Repeater("1, action, 1, "), kTwoArgs});
  EXPECT_EQ(Rejected({Repeater("1, "), Action()}),
            Lines{"Error[board.rux:2]: [REPEATER]:R, The ACTION with NAME  does not exist.\n"});
}

TEST_F(ReferenceTest, NumberOfArgumentsIsThatOfTheFirstActionOfTheName) {
  EXPECT_EQ(Rejected({Action(), kTwoArgs, Repeater("1, action, 1, 2")}),
            (Lines{"Error[board.rux:4]: [ACTION], NAME action is redefined.It has been defined in "
                   "Line[board.rux:2].\n",
                   "Error[board.rux:7]: [REPEATER]:R The ACTION action needs 0 PARAMS, but total 2 "
                   "PARAMS here.\n"}));
  EXPECT_EQ(Accepted({Action().With("NAME", "other"), kTwoArgs, Repeater("1, action, 1, 2")}),
            Lines{});
}

TEST_F(ReferenceTest, NumberOfArgumentsIsANumberNotAWord) {
  EXPECT_EQ(Accepted({Repeater("1, action"), Action().With("ARGNUMBER", "T2"), kTypes}), Lines{});
  EXPECT_EQ(Rejected({Repeater("1, action, 1, 2"), Action().With("ARGNUMBER", "T2"), kTypes}),
            Lines{"Error[board.rux:2]: [REPEATER]:R The ACTION action needs 0 PARAMS, but total 2 "
                  "PARAMS here.\n"});
  EXPECT_EQ(Accepted({Repeater("1, action, 1, 2"), Action().With("ARGNUMBER", "0x2")}), Lines{});
}

}  // namespace
