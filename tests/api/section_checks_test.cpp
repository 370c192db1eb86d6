// What a check of a whole model says: its two passes, their order, and what may be given only once.
#include "tests/api/sample_script.h"
#include "tests/support/bytes.h"

namespace {

using SectionCheckTest = CheckTest;

TEST_F(SectionCheckTest, CompleteModelIsAcceptedWithoutAMessage) {
  Write("part.rux", Device().With("NAME", "part").With("ID", "0x2"));
  EXPECT_EQ(Accepted({Morvrux(), System(), Section("INCLUDE").With("FILE", "part.rux"), Group(),
                      PelmGroup(), Sensor(), Device(), Action(), Table().With("0.255", "1"),
                      Section("GLOBAL").With("G_X", "T1, 5"), Section("PROPERTY").With("x", "y"),
                      Section("REPEATER").With("R", "G_X, action"),
                      Section("IFDEF").With("DEFINEWORD", "T0").With("W", "1"), Types()}),
            Lines{});
}

TEST_F(SectionCheckTest, EmptyModelIsAccepted) {
  EXPECT_EQ(gccCheck(), 1u);
  EXPECT_EQ(host::TakeMessages(), Lines{});
}

TEST_F(SectionCheckTest, FirstPassFollowsTheKindsInOrderOfAppearanceAndGoesOnAfterFailures) {
  EXPECT_EQ(Rejected({Device().With("ID", "x").With("INITFLAG", "y"), Table().With("TYPE", "x"),
                      Device().With("ID", "z"), Morvrux().With("VERSION", ""),
                      Table().With("TYPE", "y")}),
            (Lines{"Error[board.rux:3]: [DEVICE]:ID, x has not been defined and is not a valid "
                   "number.\n",
                   "Error[board.rux:4]: [DEVICE]:INITFLAG, y has not been defined and is not a "
                   "valid number.\n",
                   "Error[board.rux:11]: [DEVICE]:ID, z has not been defined and is not a valid "
                   "number.\n",
                   "Error[board.rux:8]: [TABLE]:TYPE, x has not been defined and is not a valid "
                   "number.\n",
                   "Error[board.rux:18]: [TABLE]:TYPE, y has not been defined and is not a valid "
                   "number.\n",
                   "Error[board.rux:15]: [MORVRUX]:VERSION, No sub-string.\n"}));
}

TEST_F(SectionCheckTest, SecondPassFollowsTheKindsInOrderOfAppearanceAndGoesOnAfterFailures) {
  const Section calls = Section("REPEATER").With("A", "1, none");
  EXPECT_EQ(Rejected({calls, PelmGroup().With("PID", "7").With("SENSORS", "8"),
                      calls.With("B", "1, none")}),
            (Lines{"Error[board.rux:2]: [REPEATER]:A, The ACTION with NAME none does not exist.\n",
                   "Error[board.rux:9]: [REPEATER], Entry A is redefined.It has been defined in "
                   "Line[board.rux:2].\n",
                   "Error[board.rux:9]: [REPEATER]:A, The ACTION with NAME none does not exist.\n",
                   "Error[board.rux:10]: [REPEATER]:B, The ACTION with NAME none does not exist.\n",
                   "Error[board.rux:6]: [PELMGROUP]:PID, Parent PELMGROUP with ID 7 does not "
                   "exist.\n",
                   "Error[board.rux:7]: [PELMGROUP]:SENSORS, The SENSOR with ID 8 does not "
                   "exist.\n"}));
}

TEST_F(SectionCheckTest, KindsOfAnIncludedFileAppearWhereItIsIncluded) {
  Write("part.rux", Table().With("TYPE", "x"));
  EXPECT_EQ(Rejected({Section("INCLUDE").With("FILE", "part.rux"), Device().With("ID", "y"),
                      Table().With("TYPE", "z")}),
            (Lines{"Error[part.rux:3]: [TABLE]:TYPE, x has not been defined and is not a valid "
                   "number.\n",
                   "Error[board.rux:10]: [TABLE]:TYPE, z has not been defined and is not a valid "
                   "number.\n",
                   "Error[board.rux:5]: [DEVICE]:ID, y has not been defined and is not a valid "
                   "number.\n"}));
}

TEST_F(SectionCheckTest, OneFailureOfTheFirstPassHoldsTheSecondBack) {
  const std::string two_systems = Script({System(), System()});
  EXPECT_EQ(Rejected({two_systems, Section("REPEATER").With("R", "1, none"), kRefused}),
            Lines{kRefusal});
}

TEST_F(SectionCheckTest, WarningsDoNotHoldTheSecondPassBack) {
  EXPECT_EQ(
      Rejected({Device().With("ID", "1, 2"), Section("REPEATER").With("R", "1, none")}),
      (Lines{"Warning[board.rux:3]: [DEVICE]:ID, More than one sub-string and get the first one as "
             "sub-string.\n",
             "Error[board.rux:7]: [REPEATER]:R, The ACTION with NAME none does not exist.\n"}));
}

TEST_F(SectionCheckTest, SectionWithAnotherNameThanItsKindIsRefused) {
  // No script makes such a section, a debug meta file can.
  Write("board.metad", ByteString()
                           .Terminated("MORV RUX metaD.")
                           .Words({RUXD_VERSION, 0})
                           .ZerosUpTo(RUXD_DATA_OFFSET)
                           .Words({0, 1, 1})  // no words, one kind with one section
                           .Words({4 + 42 + 4})
                           .Words({42, 0x20000007, 2, 7, 0, 3})  // an ACTION in line 7 ...
                           .Text("FOO")
                           .Words({1, 11})  // ... of the first of one file
                           .Text("x\\board.rux")
                           .Words({0})
                           .str());
  ASSERT_EQ(gdInit(Path("board.metad")), 1u);
  EXPECT_EQ(gccCheck(), 0u);
  EXPECT_EQ(host::TakeMessages(), Lines{"Error[board.rux:7]: Section name FOO is invalid.\n"});
}

TEST_F(SectionCheckTest, EachOfSeveralSystemOrMorvruxSectionsIsReported) {
  EXPECT_EQ(
      Rejected({System(), System()}),
      (Lines{"Error[board.rux:1]: SECTION SYSTEM is redefined. The MAX number of SYSTEM is one.\n",
             "Error[board.rux:6]: SECTION SYSTEM is redefined. The MAX number of SYSTEM is "
             "one.\n"}));
  EXPECT_EQ(Rejected({Morvrux(), Morvrux(), Morvrux()}),
            (Lines{"Error[board.rux:1]: SECTION MORVRUX is redefined. The MAX number of MORVRUX is "
                   "one.\n",
                   "Error[board.rux:3]: SECTION MORVRUX is redefined. The MAX number of MORVRUX is "
                   "one.\n",
                   "Error[board.rux:5]: SECTION MORVRUX is redefined. The MAX number of MORVRUX is "
                   "one.\n"}));
}

// Two sections of a kind, the lines of their entry of interest, and what they refer to.
struct Pair {
  Section first, second;
  const char* first_line;
  const char* second_line;
  std::string rest;
};

const std::string kSensorsOneAndTwo =
    Script({Group(), PelmGroup().With("NAME", "both").With("SENSORS", "1, 2")});

TEST_F(SectionCheckTest, NameOfAnEarlierSectionOfTheKindIsRedefined) {
  const Section pelm_group = PelmGroup().With("SENSORS", "");
  const Pair rows[] = {{Group(), Group().With("CHILDGROUP", "1"), "3", "7", ""},
                       {Sensor(), Sensor().With("ID", "2"), "3", "11", kSensorsOneAndTwo},
                       {Device(), Device().With("ID", "2"), "2", "7", ""},
                       {Action(), Action().With("ARGNUMBER", "1"), "2", "4", ""},
                       {Table(), Table().With("TYPE", "2"), "2", "5", ""},
                       {pelm_group, pelm_group.With("ID", "2"), "2", "7", ""}};
  for (const auto& [first, second, first_line, second_line, rest] : rows) {
    SCOPED_TRACE(first.kind());
    const Section named = first.With("NAME", "a b");
    EXPECT_EQ(Rejected({named, second.With("NAME", "a b"), rest, Types()}),
              (Lines{std::string("Error[board.rux:") + second_line + "]: [" + first.kind() +
                     "], NAME a b is redefined.It has been defined in Line[board.rux:" +
                     first_line + "].\n"}));
    EXPECT_EQ(Accepted({named, second.With("NAME", "A b"), rest, Types()}), Lines{});
  }
}

TEST_F(SectionCheckTest, IdOfAnEarlierSectionOfTheKindIsRedefined) {
  const Section pelm_group = PelmGroup().With("SENSORS", "");
  const Pair rows[] = {
      {Sensor(), Sensor(), "4", "12", Script({Group(), PelmGroup().With("SENSORS", "16")})},
      {Device(), Device(), "3", "8", ""},
      {pelm_group, pelm_group, "3", "8", ""}};
  for (const auto& [first, second, first_line, second_line, rest] : rows) {
    SCOPED_TRACE(first.kind());
    EXPECT_EQ(Rejected({first.With("ID", "0x10"), second.With("NAME", "b").With("ID", "16"), rest,
                        Types()}),
              (Lines{std::string("Error[board.rux:") + second_line + "]: [" + first.kind() +
                     "], ID 16 is redefined.It has been defined in Line[board.rux:" + first_line +
                     "].\n"}));
  }
}

TEST_F(SectionCheckTest, IdsThatAreWordsAreNotCompared) {
  const Section second = Device().With("NAME", "b");
  EXPECT_EQ(Accepted({Device().With("ID", "T5"), second.With("ID", "T5"), Types()}), Lines{});
  EXPECT_EQ(Accepted({Device().With("ID", "T5"), second.With("ID", "5"), Types()}), Lines{});
  EXPECT_EQ(Accepted({Sensor().With("ID", "T1"), Sensor().With("NAME", "b").With("ID", "T1"),
                      kSensorsOneAndTwo, Sensor().With("NAME", "c").With("ID", "2"), Types()}),
            Lines{});
}

TEST_F(SectionCheckTest, KindsDoNotClashWithEachOther) {
  EXPECT_EQ(
      Accepted({Action().With("NAME", "x"), Table().With("NAME", "x"), Device().With("NAME", "x"),
                Group().With("NAME", "x"), PelmGroup().With("NAME", "x").With("SENSORS", "")}),
      Lines{});
}

TEST_F(SectionCheckTest, NameIsComparedBeforeIdWithOneEarlierSectionAfterTheOther) {
  const Section a = Device().With("NAME", "a").With("ID", "1");
  const Section b = Device().With("NAME", "b").With("ID", "2");
  EXPECT_EQ(Rejected({a, a}), Lines{"Error[board.rux:7]: [DEVICE], NAME a is redefined.It has been "
                                    "defined in Line[board.rux:2].\n"});
  EXPECT_EQ(Rejected({a, b, b.With("ID", "1")}),
            Lines{"Error[board.rux:13]: [DEVICE], ID 1 is redefined.It has been defined in "
                  "Line[board.rux:3].\n"});
  EXPECT_EQ(Rejected({a, b, a.With("ID", "2")}),
            Lines{"Error[board.rux:12]: [DEVICE], NAME a is redefined.It has been defined in "
                  "Line[board.rux:2].\n"});
}

TEST_F(SectionCheckTest, EachLaterSectionIsReportedAgainstTheFirst) {
  Write("part.rux", "\n" + std::string(Action()));
  EXPECT_EQ(Rejected({Action(), Action(), Section("INCLUDE").With("FILE", "part.rux")}),
            (Lines{"Error[board.rux:4]: [ACTION], NAME action is redefined.It has been defined in "
                   "Line[board.rux:2].\n",
                   "Error[part.rux:3]: [ACTION], NAME action is redefined.It has been defined in "
                   "Line[board.rux:2].\n"}));
}

TEST_F(SectionCheckTest, EntryNameOfAnEarlierFreeSectionIsRedefined) {
  const std::pair<Section, std::string> rows[] = {
      {Section("PROPERTY"), "x"}, {Section("GLOBAL"), "T0"}, {Section("REPEATER"), "1, action"}};
  for (const auto& [section, value] : rows) {
    SCOPED_TRACE(section.kind());
    EXPECT_EQ(Rejected({section.With("G_1", value).With("G_2", value),
                        section.With("G_3", value).With("G_2", value), Action(), Types()}),
              (Lines{"Error[board.rux:6]: [" + section.kind() +
                     "], Entry G_2 is redefined.It has been defined in Line[board.rux:3].\n"}));
    EXPECT_EQ(Accepted({section.With("G_a", value), section.With("G_A", value), Action(), Types()}),
              Lines{});
  }
}

TEST_F(SectionCheckTest, OnlyTheFirstRepeatedEntryNameOfAFreeSectionIsReported) {
  const Section property("PROPERTY");
  const Section a_b = property.With("A", "x").With("B", "x");
  // Of one earlier section: this section's order decides.
  EXPECT_EQ(Rejected({a_b, property.With("B", "x").With("A", "x")}),
            Lines{"Error[board.rux:5]: [PROPERTY], Entry B is redefined.It has been defined in "
                  "Line[board.rux:3].\n"});
  // Of several: the order of the earlier sections decides.
  EXPECT_EQ(Rejected({property.With("B", "x"), property.With("A", "x"), a_b}),
            Lines{"Error[board.rux:7]: [PROPERTY], Entry B is redefined.It has been defined in "
                  "Line[board.rux:2].\n"});
}

TEST_F(SectionCheckTest, RepeatedEntryIsReportedForEachLaterOccurrence) {
  const Section property("PROPERTY");
  EXPECT_EQ(
      Rejected({property.And("A", "1").And("B", "1").And("A", "1").And("B", "1").And("A", "1")}),
      (Lines{"Error[board.rux:4]: [PROPERTY], Entry A is redefined.\n",
             "Error[board.rux:6]: [PROPERTY], Entry A is redefined.\n",
             "Error[board.rux:5]: [PROPERTY], Entry B is redefined.\n"}));
}

TEST_F(SectionCheckTest, EntryMayNotBeRepeatedInAnyKindButInclude) {
  struct Row {
    Section section;
    const char* key;
    const char* value;
    std::string rest;
  };
  const Row rows[] = {
      {Morvrux(), "VERSION", "1", ""},
      {System(), "TYPE", "1", ""},
      {System().With("P_X", "x"), "P_X", "x", ""},
      {Group(), "CHILDGROUP", "0", ""},
      {PelmGroup().With("SENSORS", ""), "SENSORS", "", ""},
      {Sensor(), "VALUE", "T0", Script({Group(), PelmGroup()})},
      {Device().With("VALUE_X", "T0"), "VALUE_X", "T0", ""},
      {Action().With("VALUE_1", "T0"), "VALUE_1", "T0", ""},
      {Table().With("5", "1"), "5", "1", ""},
      {Section("GLOBAL").With("G_X", "T0"), "G_X", "T0", ""},
      {Section("REPEATER").With("R", "1, action"), "R", "1, action", Action()},
      {Section("DEFINE").With("W", "1"), "W", "1", ""},
      {Section("IFDEF").With("DEFINEWORD", "W"), "DEFINEWORD", "1", ""},
  };
  for (const auto& [section, key, value, rest] : rows) {
    SCOPED_TRACE(section.kind() + " " + key);
    const Section repeated = section.And(key, value);
    EXPECT_EQ(Rejected({repeated, rest, Types()}),
              (Lines{"Error[board.rux:" + repeated.LastLine() + "]: [" + section.kind() +
                     "], Entry " + key + " is redefined.\n"}));
  }
  Write("one.rux", "");
  Write("two.rux", "");
  EXPECT_EQ(Accepted({Section("INCLUDE").And("FILE", "one.rux").And("FILE", "two.rux")}), Lines{});
}

TEST_F(SectionCheckTest, WordMayBeDefinedAgainInAnotherSection) {
  const Section words = Section("DEFINE").With("W", "1");
  EXPECT_EQ(Accepted({words, words, Section("IFDEF").With("DEFINEWORD", "W").With("W", "2")}),
            Lines{});
}

TEST_F(SectionCheckTest, CrossSectionRuleThenRepeatedEntriesThenReferences) {
  EXPECT_EQ(Rejected({Group().With("PARENT", "none").And("CHILDGROUP", "1")}),
            (Lines{"Error[board.rux:1]: Parent of this group hasn't been defined.\n",
                   "Error[board.rux:5]: [GROUP], Entry CHILDGROUP is redefined.\n",
                   "Error[board.rux:2]: [GROUP]:PARENT, Parent GROUP none does not exist.\n"}));
}

// The groups of these tests: lines 1 to 4 of the script that they begin, their NAME in line 3.
Section Child() { return Group().With("NAME", "child").With("PARENT", "group"); }

const std::string kIncludePart = Section("INCLUDE").With("FILE", "part.rux");

TEST_F(SectionCheckTest, ParentGroupMustBeDefinedEarlier) {
  EXPECT_EQ(Accepted({Group(), Child()}), Lines{});
  EXPECT_EQ(Rejected({Child(), Group()}),
            Lines{"Error[board.rux:1]: Parent of this group hasn't been defined.\n"});
  EXPECT_EQ(Rejected({Group().With("PARENT", "group")}),
            Lines{"Error[board.rux:1]: Parent of this group hasn't been defined.\n"});
}

TEST_F(SectionCheckTest, GroupWithoutADefinedParentIsNotComparedByName) {
  EXPECT_EQ(Rejected({Group(), Group().With("PARENT", "late"), Group().With("NAME", "late")}),
            Lines{"Error[board.rux:5]: Parent of this group hasn't been defined.\n"});
  EXPECT_EQ(Rejected({Group(), Group().With("PARENT", "group")}),
            Lines{"Error[board.rux:7]: [GROUP], NAME group is redefined.It has been defined in "
                  "Line[board.rux:3].\n"});
}

TEST_F(SectionCheckTest, LineOfAParentInAnotherFileIsComparedAsItIs) {
  // Read before its child, but from a line with a higher number than the child's.
  Write("part.rux", std::string(20, '\n') + std::string(Group()));
  EXPECT_EQ(Rejected({kIncludePart, Child()}),
            Lines{"Error[board.rux:3]: Parent of this group hasn't been defined.\n"});
  // Read after its child, but from a line before the child's.
  Write("part.rux", std::string(20, '\n') + std::string(Child()));
  EXPECT_EQ(Accepted({kIncludePart, Group()}), Lines{});
}

TEST_F(SectionCheckTest, HeaderOfTheParentStandsBeforeTheHeaderOfTheChild) {
  // The parent's header is in line 3 of the board; that its NAME is in line 5 does not matter.
  Write("part.rux", std::string(2, '\n') + std::string(Child()));
  EXPECT_EQ(Rejected({kIncludePart, Group()}),
            Lines{"Error[part.rux:3]: Parent of this group hasn't been defined.\n"});
  Write("part.rux", std::string(3, '\n') + std::string(Child()));
  EXPECT_EQ(Accepted({kIncludePart, Group()}), Lines{});
}

}  // namespace
