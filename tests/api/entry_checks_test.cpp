// The first pass over entries that hold numbers, strings, lists and repeaters: their names, whether
// they are there, and what they hold.
#include "tests/api/sample_script.h"
#include "tests/support/bytes.h"

namespace {

class EntryNameTest : public CheckTest {
 protected:
  // Names of further entries of the section: the `good` ones are accepted with that value, the
  // `bad` ones are not. `rest` is what the section refers to.
  void ExpectNames(const Section& section, const std::string& value, const Lines& good,
                   const Lines& bad, const std::string& rest = "") {
    for (const std::string& name : good) {
      SCOPED_TRACE(name);
      EXPECT_EQ(Accepted({section.And(name, value), rest, Types()}), Lines{});
    }
    for (const std::string& name : bad) {
      SCOPED_TRACE(name);
      const Section badly_named = section.And(name, value);
      EXPECT_EQ(Rejected({badly_named, rest, Types()}),
                (Lines{"Error[board.rux:" + badly_named.LastLine() + "]: [" + section.kind() +
                       "]:" + name + ", Entry name is invalid.\n"}));
    }
  }
};

TEST_F(EntryNameTest, PropertyNameDoesNotBeginWithADigit) {
  ExpectNames(Section("PROPERTY"), "text", {"x3", "_3", "-3"}, {"3", "3x", "0", "9"});
}

TEST_F(EntryNameTest, RepeaterNameDoesNotBeginWithADigit) {
  ExpectNames(Section("REPEATER"), "1, action", {"R1", "x"}, {"1R", "7"}, Action());
}

TEST_F(EntryNameTest, DefinedWordDoesNotBeginWithADigit) {
  ExpectNames(Section("DEFINE"), "1", {"W5", "+5", "-"}, {"5", "0x5"});
  ExpectNames(Section("IFDEF").With("DEFINEWORD", "T0"), "1", {"W5"}, {"5W"});
}

TEST_F(EntryNameTest, WordWithABadNameIsReportedWhileReadAndNotDefined) {
  const std::string bad_name = "Error[board.rux:2]: [DEFINE]:0xW, Entry name is invalid.\n";
  EXPECT_EQ(Parse(Script({Section("DEFINE").With("0xW", "1"), System().With("FLAG", "0xW")})),
            (Lines{bad_name, "Parse::No more sections(total = 2).\n"}));
  EXPECT_EQ(gccCheck(), 0u);
  EXPECT_EQ(host::TakeMessages(),
            (Lines{bad_name,
                   "Error[board.rux:6]: [SYSTEM]:FLAG, 0xW has not been defined and is not a valid "
                   "number.\n"}));
}

TEST_F(EntryNameTest, FreeNameOfSystemAndPelmGroupBeginsWithP) {
  ExpectNames(System(), "text", {"P_X", "P_3", "P_"}, {"FOO", "p_X", "XP_", "P", "VALUE_X"});
  ExpectNames(PelmGroup().With("SENSORS", ""), "text", {"P_X"}, {"FOO", "PX"});
}

TEST_F(EntryNameTest, FreeNameOfSensorAndDeviceBeginsWithPOrValue) {
  ExpectNames(Sensor(), "T0", {"P_X", "VALUE_X", "VALUE_1", "VALUE_"}, {"FOO", "value_X", "VALUEX"},
              Script({Group(), PelmGroup()}));
  ExpectNames(Device(), "T0", {"P_X", "VALUE_X", "VALUE_INIT"}, {"FOO", "VALUE", "G_X"});
}

TEST_F(EntryNameTest, FreeNameOfActionIsValueWithANumber) {
  ExpectNames(Action(), "T0", {"VALUE_1", "VALUE_0", "VALUE_0x1F", "VALUE_1x", "VALUE_"},
              {"VALUE_X", "VALUE_INIT", "VALUE_12345678901", "FOO", "P_X"});
  ExpectRaise({Action().With("VALUE_0x", "T0"), Types()});
}

TEST_F(EntryNameTest, GlobalNameBeginsWithG) {
  ExpectNames(Section("GLOBAL"), "T0", {"G_X", "G_1", "G_"}, {"X", "g_X", "G", "VALUE"});
}

TEST_F(EntryNameTest, TableRowIsACellOrARangeOfCells) {
  ExpectNames(Table(), "1",
              {"3.7", "5", "0", "255", "0.255", "5.5", "255.255", "0x10.0x1F", "1.2.3", "3x.7x"},
              {"7.3", "1.256", "256", "256.256", "-1", "x", "1.x", "x.1", "00000000001"});
  for (const char* name : {".", ".5", "5.", "0x", "0x.5"}) {
    SCOPED_TRACE(name);
    ExpectRaise({Table().With(name, "1")});
  }
}

TEST_F(EntryNameTest, IncludeTakesNothingButFile) {
  const std::string path = "Error[board.rux:2]: [INCLUDE]:PATH, Entry name is invalid.\n";
  const std::string files = "Error[board.rux:3]: [INCLUDE]:FILES, Entry name is invalid.\n";
  EXPECT_EQ(Parse("[INCLUDE]\nPATH = part.rux\nFILES = part.rux\n"),
            (Lines{path, files, "Parse::No more sections(total = 1).\n"}));
  EXPECT_EQ(gccCheck(), 0u);
  EXPECT_EQ(host::TakeMessages(), (Lines{path, files}));
}

using EntryCheckTest = CheckTest;

TEST_F(EntryCheckTest, MissingRequiredEntriesAreReportedInLineZero) {
  const std::pair<std::string, Lines> rows[] = {
      {"MORVRUX", {"VERSION"}},
      {"SYSTEM", {"TYPE", "MODEL", "FLAG", "RUXLOOP"}},
      {"GROUP", {"PARENT", "NAME", "CHILDGROUP"}},
      {"PELMGROUP", {"NAME", "ID", "PID", "SENSORS"}},
      {"SENSOR", {"PARENT", "NAME", "ID", "TYPE", "INITFLAG", "CONTROLMASK", "VALUE"}},
      {"DEVICE", {"NAME", "ID", "INITFLAG", "CONTROLMASK"}},
      {"ACTION", {"NAME"}},
      {"TABLE", {"NAME", "TYPE"}},
      {"IFDEF", {"DEFINEWORD"}},
  };
  for (const auto& [kind, keys] : rows) {
    SCOPED_TRACE(kind);
    Lines expected;
    for (const std::string& key : keys) {
      expected.push_back("Error[board.rux:0]: [" + kind + "]:" + key +
                         ", This ENTRY does not exist.\n");
    }
    EXPECT_EQ(Rejected({Section(kind)}), expected);
  }
  for (const char* kind : {"PROPERTY", "GLOBAL", "REPEATER", "DEFINE", "INCLUDE"}) {
    SCOPED_TRACE(kind);
    EXPECT_EQ(Accepted({Section(kind)}), Lines{});
  }
}

// An entry that was never written belongs to no file, so that of the first one is named.
TEST_F(EntryCheckTest, MissingEntryOfAnIncludedFileNamesTheFirstFile) {
  Write("part.rux", "\n[ACTION]\n");
  EXPECT_EQ(Rejected({"[INCLUDE]\nFILE = part.rux\n"}),
            Lines{"Error[board.rux:0]: [ACTION]:NAME, This ENTRY does not exist.\n"});
}

TEST_F(EntryCheckTest, MissingEntryHasNoNameAfterItsMessage) {
  EXPECT_EQ(Check(Section("MORVRUX"), 0),
            Lines{"Error[board.rux:0]: [MORVRUX]:VERSION, This ENTRY does not exist.\n"});
  ASSERT_EQ(gccOutputD(Path("board.metad")), 1u);
  EXPECT_EQ(ReadAll("board.metad").find("VERSION"), std::string::npos);
}

TEST_F(EntryCheckTest, EntriesAreCheckedInTheOrderOfTheKindThenAsAdded) {
  EXPECT_EQ(Rejected({"[DEVICE]\nBAD = T0\nCONTROLMASK = x\nINITFLAG = x\nID = x\nID = y\n"}),
            (Lines{"Error[board.rux:0]: [DEVICE]:NAME, This ENTRY does not exist.\n",
                   "Error[board.rux:5]: [DEVICE]:ID, x has not been defined and is not a valid "
                   "number.\n",
                   "Error[board.rux:4]: [DEVICE]:INITFLAG, x has not been defined and is not a "
                   "valid number.\n",
                   "Error[board.rux:3]: [DEVICE]:CONTROLMASK, x has not been defined and is not a "
                   "valid number.\n",
                   "Error[board.rux:2]: [DEVICE]:BAD, Entry name is invalid.\n",
                   "Error[board.rux:6]: [DEVICE]:ID, y has not been defined and is not a valid "
                   "number.\n"}));
}

TEST_F(EntryCheckTest, EntryWithoutAValueHasNoSubString) {
  EXPECT_EQ(Rejected({Device().With("NAME", "").With("ID", "")}),
            (Lines{"Error[board.rux:2]: [DEVICE]:NAME, No sub-string.\n",
                   "Error[board.rux:3]: [DEVICE]:ID, No sub-string.\n"}));
}

TEST_F(EntryCheckTest, EmptyTextIsNoSubStringEither) {
  EXPECT_EQ(Rejected({Device().With("NAME", "\"\"").With("ID", ",1")}),
            (Lines{"Error[board.rux:2]: [DEVICE]:NAME, No sub-string.\n",
                   "Warning[board.rux:3]: [DEVICE]:ID, More than one sub-string and get the first "
                   "one as sub-string.\n",
                   "Error[board.rux:3]: [DEVICE]:ID, No sub-string.\n"}));
}

TEST_F(EntryCheckTest, FirstOfSeveralSubStringsIsTakenWithAWarning) {
  EXPECT_EQ(Accepted({Device().With("ID", "1, x")}),
            Lines{"Warning[board.rux:3]: [DEVICE]:ID, More than one sub-string and get the first "
                  "one as sub-string.\n"});
  EXPECT_EQ(Rejected({Device().With("NAME", "a, b"), Device().With("NAME", "a").With("ID", "2")}),
            (Lines{"Warning[board.rux:2]: [DEVICE]:NAME, More than one sub-string and get the "
                   "first one as sub-string.\n",
                   "Error[board.rux:7]: [DEVICE], NAME a is redefined.It has been defined in "
                   "Line[board.rux:2].\n"}));
}

TEST_F(EntryCheckTest, CommaInQuotesDoesNotMakeTwoSubStrings) {
  EXPECT_EQ(Accepted({Device().With("NAME", "\"a, b\"")}), Lines{});
}

TEST_F(EntryCheckTest, ModelOfSystemMayBeAnEmptyText) {
  EXPECT_EQ(Accepted({System().With("MODEL", "\"\"")}), Lines{});
  EXPECT_EQ(Rejected({System().With("MODEL", "")}),
            Lines{"Error[board.rux:3]: [SYSTEM]:MODEL, No sub-string.\n"});
  EXPECT_EQ(Rejected({System().With("P_MODEL", "\"\"")}),
            Lines{"Error[board.rux:6]: [SYSTEM]:P_MODEL, No sub-string.\n"});
}

TEST_F(EntryCheckTest, NumericEntriesTakeNumbersAndWordsOnly) {
  struct Row {
    Section section;
    Lines numeric;
  };
  const Row rows[] = {{System(), {"TYPE", "FLAG", "SOUTHBRIDGE", "NORTHBRIDGE", "RUXLOOP"}},
                      {Group(), {"CHILDGROUP"}},
                      {PelmGroup(), {"ID", "PID"}},
                      {Sensor(),
                       {"ID", "TYPE", "INITFLAG", "CONTROLMASK", "THEORY", "THRESHOLD_FH",
                        "THRESHOLD_WH", "THRESHOLD_FL", "THRESHOLD_WL"}},
                      {Device(), {"ID", "INITFLAG", "CONTROLMASK"}},
                      {Action(), {"ARGNUMBER"}},
                      {Table(), {"TYPE"}}};
  for (const auto& [section, keys] : rows) {
    for (const std::string& key : keys) {
      SCOPED_TRACE(section.kind() + " " + key);
      EXPECT_EQ(
          Rejected({section.With(key, "x"), Types()}),
          (Lines{"Error[board.rux:" + section.With(key, "").LineOf(key) + "]: [" + section.kind() +
                 "]:" + key + ", x has not been defined and is not a valid number.\n"}));
      EXPECT_EQ(Rejected({section.With(key, "T12"), Types(), kRefused}), Lines{kRefusal});
    }
  }
}

TEST_F(EntryCheckTest, OtherStringsTakeAnyText) {
  EXPECT_EQ(Accepted({Morvrux().With("VERSION", "x"), System().With("MODEL", "x"),
                      Section("PROPERTY").With("x", "y"), Table().With("5", "no number"),
                      Section("IFDEF").With("DEFINEWORD", "x")}),
            Lines{});
}

TEST_F(EntryCheckTest, SensorsMayBeAnEmptyList) {
  EXPECT_EQ(Accepted({PelmGroup().With("SENSORS", "")}), Lines{});
}

// Only the second pass looks at the elements.
TEST_F(EntryCheckTest, SensorsHoldAnyTextsInTheFirstPass) {
  EXPECT_EQ(Rejected({PelmGroup().With("SENSORS", "x, , y"), kRefused}), Lines{kRefusal});
}

TEST_F(EntryCheckTest, RepeaterNeedsACountAndAnAction) {
  EXPECT_EQ(Rejected({Section("REPEATER").With("R", "").With("S", "1").With("T", "\"\"")}),
            (Lines{"Error[board.rux:2]: [REPEATER]:R, No sub-string.\n",
                   "Error[board.rux:3]: [REPEATER]:S, not enough sub-strings.\n",
                   "Error[board.rux:4]: [REPEATER]:T, not enough sub-strings.\n"}));
  EXPECT_EQ(Accepted({Section("REPEATER").With("R", "1, action"), Action()}), Lines{});
}

TEST_F(EntryCheckTest, DefinitionWithoutAValueIsReportedWhileReadAndAgain) {
  const std::string no_value = "Error[board.rux:2]: [DEFINE]:A, No sub-string.\n";
  EXPECT_EQ(Parse(Script({Section("DEFINE").With("A", ""), System().With("FLAG", "A")})),
            (Lines{no_value, "Parse::No more sections(total = 2).\n"}));
  EXPECT_EQ(gccCheck(), 0u);
  EXPECT_EQ(host::TakeMessages(),
            (Lines{no_value,
                   "Error[board.rux:6]: [SYSTEM]:FLAG, A has not been defined and is not a valid "
                   "number.\n"}));
}

TEST_F(EntryCheckTest, DefinitionTakesTheFirstOfSeveralSubStringsWithAWarningEachTime) {
  const std::string warning =
      "Warning[board.rux:2]: [DEFINE]:A, More than one sub-string and get the first one as "
      "sub-string.\n";
  EXPECT_EQ(Parse(Script({Section("DEFINE").With("A", "5, 6"),
                          PelmGroup().With("ID", "5").With("PID", "A").With("SENSORS", "")})),
            (Lines{warning, "Parse::No more sections(total = 2).\n"}));
  EXPECT_EQ(gccCheck(), 1u);
  EXPECT_EQ(host::TakeMessages(), Lines{warning});
}

TEST_F(EntryCheckTest, DefinitionThatIsNoNumberIsAcceptedSilentlyAsZero) {
  for (const char* text : {"abc", "00000000000", "12345678901", "\" 0\""}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Accepted({Section("DEFINE").With("A", text),
                        PelmGroup().With("PID", "A").With("SENSORS", "")}),
              Lines{});
  }
}

TEST_F(EntryCheckTest, ConditionWithoutAWordIsReportedWhileReadAndAgain) {
  const std::string no_word = "Error[board.rux:2]: [IFDEF]:DEFINEWORD, No sub-string.\n";
  EXPECT_EQ(Parse("[IFDEF]\nDEFINEWORD =\n"),
            (Lines{no_word, "Parse::No more sections(total = 1).\n"}));
  EXPECT_EQ(gccCheck(), 0u);
  EXPECT_EQ(host::TakeMessages(), Lines{no_word});
}

TEST_F(EntryCheckTest, FirstPassUsesTheSubStringsUp) {
  Parse(Script({Device(), Section("DEFINE").With("A", "1")}));
  EXPECT_EQ(gccCheck(), 1u);
  EXPECT_EQ(gccCheck(), 0u);
  EXPECT_EQ(host::TakeMessages(), (Lines{"Error[board.rux:2]: [DEVICE]:NAME, No sub-string.\n",
                                         "Error[board.rux:3]: [DEVICE]:ID, No sub-string.\n",
                                         "Error[board.rux:4]: [DEVICE]:INITFLAG, No sub-string.\n",
                                         "Error[board.rux:5]: [DEVICE]:CONTROLMASK, No "
                                         "sub-string.\n",
                                         "Error[board.rux:7]: [DEFINE]:A, No sub-string.\n"}));
}

// No script makes such an entry, a debug meta file can.
TEST_F(EntryCheckTest, EntryWithAnUnknownIdentifierIsRefusedWithoutAMessage) {
  const std::uint32_t unknown = 0x10020099;
  Write("board.metad", ByteString()
                           .Terminated("MORV RUX metaD.")
                           .Words({RUXD_VERSION, 0})
                           .ZerosUpTo(RUXD_DATA_OFFSET)
                           .Words({0, 1, 1})  // no words, one kind with one section
                           .Words({4 + 32 + 4 + 4 + 37})
                           .Words({32, 0x20000002, 2, 1, 0, 8})
                           .Text("PROPERTY")
                           .Words({0})  // no source files
                           .Words({1})  // one entry
                           .Words({37, 21, unknown, 2, 2, 0, 1})
                           .Text("x")
                           .Words({8, unknown, 0})
                           .str());
  ASSERT_EQ(gdInit(Path("board.metad")), 1u);
  EXPECT_EQ(gccCheck(), 0u);
  EXPECT_EQ(host::TakeMessages(), Lines{});
}

}  // namespace
