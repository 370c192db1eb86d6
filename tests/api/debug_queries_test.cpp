// The debug queries on loaded models: what they answer, and which last-error word they set.
#include "tests/api/debug_bytes.h"

namespace {

// A code that nobody sets: a last-error word still holds it when it was left alone.
constexpr std::uint32_t kUntouched = 70;

class DebugQueriesTest : public DebugTest {
 protected:
  void SetUp() override {
    DebugTest::SetUp();
    Codes();
  }

  // Both last-error words as the call before left them: "debug side, compiled side", "-" for one
  // that was left alone.
  static std::string Codes() {
    const auto show = [](std::uint32_t code) {
      return code == kUntouched ? "-" : std::to_string(code);
    };
    const std::string codes = show(gdGetLastError()) + ", " + show(gcGetLastError());
    gdSetLastError(kUntouched);
    gcSetLastError(kUntouched);
    return codes;
  }

  // Loads SENSOR sections with these entries, in this order.
  void LoadSensors(const std::vector<Texts>& sensors) {
    LoadSections(kSensorSection, "SENSOR", sensors);
  }
  void LoadSections(std::uint32_t identifier, const std::string& keyword,
                    const std::vector<Texts>& entries) {
    Texts sections;
    for (const Texts& each : entries) {
      const std::string list = sections.empty() ? List({"board.rux"}) : "";
      sections.push_back(Section(Object(identifier, 2, 1, 0, keyword) + list, each));
    }
    ASSERT_EQ(Load(DebugMeta({}, {sections})), "1");
    Codes();
  }

  static std::string Text(std::uint32_t identifier, const std::string& name,
                          const std::string& text) {
    return Entry(Object(identifier, 1, 2, 0, name), StringPayload(identifier, text));
  }
  static std::string Name(const std::string& text) { return Text(kNameEntry, "NAME", text); }
  static std::string Parent(const std::string& text) { return Text(kParentEntry, "PARENT", text); }
  static std::string Id(const std::string& text) { return Text(kIdEntry, "ID", text); }

  static GDSECTION Sensor(std::uint32_t ordinal) {
    const GDSECTION section = gdGetSectByIndex(RUX_SECT_SENSOR, ordinal);
    EXPECT_NE(section, nullptr);
    Codes();
    return section;
  }
};

// The last-error word

TEST_F(DebugQueriesTest, LastErrorWordIsOfTheDebugSideAlone) {
  gcSetLastError(3);
  gdSetLastError(0xFFFFFFFF);
  EXPECT_EQ(gdGetLastError(), 0xFFFFFFFFu);
  EXPECT_EQ(g_dwLastErrorD, 0xFFFFFFFFu);
  EXPECT_EQ(gcGetLastError(), 3u);
}

using DebugStartTest = DebugTest;  // starts with the words as the library was loaded

TEST_F(DebugStartTest, LastErrorWordsStartAtZero) {
  EXPECT_EQ(gdGetLastError(), 0u);
  EXPECT_EQ(gcGetLastError(), 0u);
}

// gdInit and gdUnInit

TEST_F(DebugQueriesTest, LoadingSucceedsOnTheCompiledSide) {
  ASSERT_EQ(Load(DebugMeta({}, {})), "1");
  EXPECT_EQ(Codes(), "-, 0");
}

TEST_F(DebugQueriesTest, LoadingFailsWithoutACode) {
  EXPECT_EQ(gdInit(Path("none.metad")), 0u);
  EXPECT_EQ(Codes(), "-, -");
  EXPECT_EQ(Load("no debug meta file"), "0");
  EXPECT_EQ(Codes(), "-, -");
  EXPECT_EQ(Load(DebugMeta({}, {}, 0x00000001)), "0");
  EXPECT_EQ(Codes(), "-, -");
}

TEST_F(DebugQueriesTest, UnInitDropsSectionsAndWords) {
  EXPECT_EQ(gdUnInit(), 1u);
  const std::string file = DebugMeta({{"W", 7}}, {{PropertyRecord(List({"a.rux"}), {})}});
  ASSERT_EQ(Load(file), "1");
  ASSERT_NE(gdGetSectByIndex(RUX_SECT_PROPERTY, 0), nullptr);
  EXPECT_EQ(gdUnInit(), 1u);
  EXPECT_EQ(gdGetSectByIndex(RUX_SECT_PROPERTY, 0), nullptr);
  EXPECT_SAME_BYTES(OutputD(), DebugMeta({}, {{}}));  // the kind stays known
  ASSERT_EQ(Load(file), "1");
  EXPECT_SAME_BYTES(OutputD(), file);
}

// gdGetSectByIndex

TEST_F(DebugQueriesTest, SectionsOfAKindComeInTheirOrder) {
  LoadSensors({{Name("a")}, {Name("b")}, {Name("c")}});
  for (std::uint32_t i = 0; i < 3; ++i) {
    const GDSECTION sensor = gdGetSectByIndex(RUX_SECT_SENSOR, i);
    EXPECT_EQ(Codes(), "0, -");
    EXPECT_EQ(gdGetSectName(sensor), std::string(1, "abc"[i]));
  }
}

TEST_F(DebugQueriesTest, OrdinalPastTheSectionsIsToldOnTheCompiledSide) {
  LoadSensors({{}, {}});
  for (const std::uint32_t ordinal : {2u, 3u, 0xFFFFFFFFu}) {
    EXPECT_EQ(gdGetSectByIndex(RUX_SECT_SENSOR, ordinal), nullptr);
    EXPECT_EQ(Codes(), "-, 4");
  }
}

TEST_F(DebugQueriesTest, KindWithoutSectionsIsToldOnTheDebugSide) {
  EXPECT_EQ(gdGetSectByIndex(RUX_SECT_SENSOR, 0), nullptr);
  EXPECT_EQ(Codes(), "1, -");
  LoadSensors({{}});
  for (const std::uint32_t kind : {0x01000004u, 0x01000000u, 0x0100000Fu, 0x01010005u, 0u}) {
    EXPECT_EQ(gdGetSectByIndex(kind, 0), nullptr) << kind;
    EXPECT_EQ(Codes(), "1, -");
  }
}

// A kind whose sections are gone is a kind without sections.
TEST_F(DebugQueriesTest, KindThatWasEmptiedIsToldOnTheDebugSide) {
  LoadSensors({{}});
  gdUnInit();
  Codes();
  EXPECT_EQ(gdGetSectByIndex(RUX_SECT_SENSOR, 0), nullptr);
  EXPECT_EQ(Codes(), "1, -");
}

TEST_F(DebugQueriesTest, TopByteOfTheKindDoesNotCount) {
  LoadSensors({{}});
  const GDSECTION sensor = Sensor(0);
  for (const std::uint32_t top : {0x00u, 0x01u, 0x02u, 0x10u, 0x20u, 0xFFu}) {
    EXPECT_EQ(gdGetSectByIndex(top << 24 | 5, 0), sensor) << top;
    EXPECT_EQ(Codes(), "0, -");
  }
}

TEST_F(DebugQueriesTest, DefineAndIfdefSectionsAreThere) {
  LoadSections(kDefineSection, "DEFINE", {{}});
  EXPECT_NE(gdGetSectByIndex(RUX_SECT_DEFINE, 0), nullptr);
  EXPECT_EQ(gdGetSectByIndex(RUX_SECT_IFDEF, 0), nullptr);
  LoadSections(0x2000000D, "IFDEF", {{}});
  EXPECT_NE(gdGetSectByIndex(RUX_SECT_IFDEF, 0), nullptr);
}

// gdGetSectName and gdGetSectPName

TEST_F(DebugQueriesTest, NameAndParentAreTheirTexts) {
  LoadSensors({{Name("CPU 0, \"core\""), Parent("Root")}});
  EXPECT_STREQ(gdGetSectName(Sensor(0)), "CPU 0, \"core\"");
  EXPECT_EQ(Codes(), "0, -");
  EXPECT_STREQ(gdGetSectPName(Sensor(0)), "Root");
  EXPECT_EQ(Codes(), "0, -");
}

TEST_F(DebugQueriesTest, EmptyNameAndParentAreTextsToo) {
  LoadSensors({{Name(""), Parent("")}});
  EXPECT_STREQ(gdGetSectName(Sensor(0)), "");
  EXPECT_EQ(Codes(), "0, -");
  EXPECT_STREQ(gdGetSectPName(Sensor(0)), "");
  EXPECT_EQ(Codes(), "0, -");
}

TEST_F(DebugQueriesTest, NullSectionHasNeitherNameNorParentNorIdNorEntries) {
  EXPECT_EQ(gdGetSectName(nullptr), nullptr);
  EXPECT_EQ(Codes(), "1, -");
  EXPECT_EQ(gdGetSectPName(nullptr), nullptr);
  EXPECT_EQ(Codes(), "1, -");
  EXPECT_EQ(gdGetSectID(nullptr), 0xFFFFFFFFu);
  EXPECT_EQ(Codes(), "1, -");
  EXPECT_EQ(gdGetEntryByIndex(nullptr, 0), nullptr);
  EXPECT_EQ(Codes(), "1, -");
}

TEST_F(DebugQueriesTest, KindWithoutTheEntryHasNoSuchText) {
  LoadSections(kPropertySection, "PROPERTY", {{}});
  const GDSECTION property = gdGetSectByIndex(RUX_SECT_PROPERTY, 0);
  EXPECT_EQ(gdGetSectName(property), nullptr);
  EXPECT_EQ(Codes(), "2, -");
  EXPECT_EQ(gdGetSectPName(property), nullptr);
  EXPECT_EQ(Codes(), "2, -");
  EXPECT_EQ(gdGetSectID(property), 0xFFFFFFFFu);
  EXPECT_EQ(Codes(), "2, -");
}

TEST_F(DebugQueriesTest, EntryThatWasNotGivenHasNoText) {
  LoadSensors({{}});
  EXPECT_EQ(gdGetSectName(Sensor(0)), nullptr);
  EXPECT_EQ(Codes(), "3, -");
  EXPECT_EQ(gdGetSectPName(Sensor(0)), nullptr);
  EXPECT_EQ(Codes(), "3, -");
  EXPECT_EQ(gdGetSectID(Sensor(0)), 0xFFFFFFFFu);
  EXPECT_EQ(Codes(), "3, -");
}

// A file may say that a name is a number or a list; no text is made of that.
TEST_F(DebugQueriesTest, EntryThatHoldsNoTextHasNoUsableValue) {
  for (const std::string& payload :
       {Numbers({kWordEntry, 7}), Numbers({kSensorsEntry, 0}), Numbers({kRepeaterEntry, 0, 0, 0}),
        ValuePayload(kValueEntry, 0, "T", "")}) {
    SCOPED_TRACE(HexDump(payload));
    InOwnProcess([&] {
      const auto entry = [&](std::uint32_t id) { return Entry(Object(id, 1, 2, 0, "X"), payload); };
      LoadSensors({{entry(kNameEntry), entry(kParentEntry), entry(kIdEntry)}});
      EXPECT_EQ(gdGetSectName(Sensor(0)), nullptr);
      EXPECT_EQ(Codes(), "3, -");
      EXPECT_EQ(gdGetSectPName(Sensor(0)), nullptr);
      EXPECT_EQ(Codes(), "3, -");
      EXPECT_EQ(gdGetSectID(Sensor(0)), 0xFFFFFFFFu);
      EXPECT_EQ(Codes(), "3, -");
    });
  }
}

// gdGetSectID

TEST_F(DebugQueriesTest, IdIsTheNumberThatItsTextBegins) {
  const std::pair<const char*, std::uint32_t> rows[] = {{"16", 16},
                                                        {"0x10", 16},
                                                        {"0X1f", 31},
                                                        {"010", 10},
                                                        {"0", 0},
                                                        {"0x0", 0},
                                                        {"00", 0},
                                                        {"12abc", 12},
                                                        {" 7", 7},
                                                        {"+7", 7},
                                                        {"-1", 0xFFFFFFFF},
                                                        {"1234567890", 1234567890},
                                                        {"0xFFFFFFFE", 0xFFFFFFFE}};
  std::vector<Texts> sensors;
  for (const auto& row : rows) sensors.push_back({Id(row.first)});
  LoadSensors(sensors);
  std::uint32_t ordinal = 0;
  for (const auto& [text, number] : rows) {
    SCOPED_TRACE(text);
    EXPECT_EQ(gdGetSectID(Sensor(ordinal++)), number);
    EXPECT_EQ(Codes(), "0, -");
  }
}

TEST_F(DebugQueriesTest, IdThatIsNoNumberHasNoValue) {
  const char* const texts[] = {"abc", "FANID", "0xg", "-0", " 0", "12345678901", "0x123456789"};
  std::vector<Texts> sensors;
  for (const char* text : texts) sensors.push_back({Id(text)});
  LoadSensors(sensors);
  std::uint32_t ordinal = 0;
  for (const char* text : texts) {
    SCOPED_TRACE(text);
    EXPECT_EQ(gdGetSectID(Sensor(ordinal++)), 0xFFFFFFFFu);
    EXPECT_EQ(Codes(), "3, -");
  }
}

TEST_F(DebugQueriesTest, IdThatIsADefinedWordHasNoValue) {
  const std::string sensor =
      Section(Object(kSensorSection, 2, 1, 0, "SENSOR") + List({"board.rux"}), {Id("FANID")});
  ASSERT_EQ(Load(DebugMeta({{"FANID", 16}}, {{sensor}})), "1");
  EXPECT_EQ(gdGetSectID(Sensor(0)), 0xFFFFFFFFu);
  EXPECT_EQ(Codes(), "3, -");
}

TEST_F(DebugQueriesTest, IdWithoutADigitToLookAtRaises) {
  LoadSensors({{Id("")}, {Id("0x")}, {Id("0X")}});
  for (std::uint32_t i = 0; i < 3; ++i) {
    const GDSECTION sensor = Sensor(i);
    try {
      gdGetSectID(sensor);
      FAIL();
    } catch (const std::out_of_range& error) {
      EXPECT_STREQ(error.what(), "basic_string::at");
    }
    EXPECT_EQ(Codes(), "-, -");
  }
}

// gdGetEntryByIndex and gdGetEntryName

TEST_F(DebugQueriesTest, EntriesThatWereGivenComeInTheirOrder) {
  const auto property = [](const std::string& name) {
    return Entry(Object(0x10020018, 10, 2, 0, name), StringPayload(0x10020018, "x"));
  };
  // The kind's own entries come first, with gaps where nothing was given.
  LoadSensors({{property("P_X"), Text(0x10028002, "TYPE", "1"), Name("CPU"), property("P_Y")}});
  std::uint32_t ordinal = 0;
  for (const char* name : {"NAME", "TYPE", "P_X", "P_Y"}) {
    const GDENTRY entry = gdGetEntryByIndex(Sensor(0), ordinal++);
    EXPECT_EQ(Codes(), "0, -");
    EXPECT_STREQ(gdGetEntryName(entry), name);
    EXPECT_EQ(Codes(), "0, -");
  }
}

TEST_F(DebugQueriesTest, OrdinalPastTheEntriesIsToldOnTheCompiledSide) {
  LoadSensors({{Name("CPU"), Id("3")}});
  for (const std::uint32_t ordinal : {2u, 3u, 17u, 0xFFFFFFFFu}) {
    EXPECT_EQ(gdGetEntryByIndex(Sensor(0), ordinal), nullptr);
    EXPECT_EQ(Codes(), "-, 4");
  }
}

TEST_F(DebugQueriesTest, SectionWithoutGivenEntriesIsToldOnTheCompiledSide) {
  LoadSensors({{}, {Entry(Object(kNameEntry, 1, 2, 0, "NAME"), Numbers({0x10200000}))}});
  for (const std::uint32_t section : {0u, 1u}) {
    for (const std::uint32_t ordinal : {0u, 1u, 0xFFFFFFFFu}) {
      EXPECT_EQ(gdGetEntryByIndex(Sensor(section), ordinal), nullptr);
      EXPECT_EQ(Codes(), "-, 2");
    }
  }
  LoadSections(kPropertySection, "PROPERTY", {{}});
  EXPECT_EQ(gdGetEntryByIndex(gdGetSectByIndex(RUX_SECT_PROPERTY, 0), 0), nullptr);
  EXPECT_EQ(Codes(), "0, 2");  // 0: the section
}

TEST_F(DebugQueriesTest, NullEntryHasNeitherNameNorValue) {
  EXPECT_EQ(gdGetEntryName(nullptr), nullptr);
  EXPECT_EQ(Codes(), "2, -");
  char text[] = "kept";
  EXPECT_EQ(gdGetValue(nullptr, text), 0u);
  EXPECT_EQ(Codes(), "2, -");
  EXPECT_STREQ(text, "kept");
  EXPECT_EQ(gdGetValue(nullptr, nullptr), 0u);
  EXPECT_EQ(Codes(), "2, -");
  EXPECT_EQ(gdGetValue(nullptr), "");
  EXPECT_EQ(Codes(), "2, -");
}

// gdGetValue

TEST_F(DebugQueriesTest, ValueGoesIntoTheBufferWithItsZeroAndNoFurther) {
  ASSERT_EQ(Load(OneEntry(kWordEntry, Numbers({kWordEntry, 255}))), "1");
  const GDENTRY entry = gdGetEntryByIndex(gdGetSectByIndex(RUX_SECT_PROPERTY, 0), 0);
  Codes();
  char text[8] = {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h'};
  EXPECT_EQ(gdGetValue(entry, text), 1u);
  EXPECT_EQ(Codes(), "0, -");
  EXPECT_EQ(std::string(text, 8), std::string("0xff\0fgh", 8));
}

TEST_F(DebugQueriesTest, NullBufferAsksForTheSize) {
  const std::string list = Numbers({kSensorsEntry}) + List({"1", "2", "3"});
  LoadSections(kPropertySection, "PROPERTY",
               {{Text(kPropertyEntry, "A", ""), Entry(Object(kSensorsEntry, 2, 3, 0, "B"), list)}});
  const GDSECTION property = gdGetSectByIndex(RUX_SECT_PROPERTY, 0);
  EXPECT_EQ(gdGetValue(gdGetEntryByIndex(property, 0), nullptr), 1u);
  EXPECT_EQ(gdGetValue(gdGetEntryByIndex(property, 1), nullptr), 6u);  // "1,2,3"
  EXPECT_EQ(gdGetValue(gdGetEntryByIndex(property, 0)), "");
  EXPECT_EQ(gdGetValue(gdGetEntryByIndex(property, 1)), "1,2,3");
}

// The model of a compile run

TEST_F(DebugQueriesTest, ModelOfACompileRunAnswersToo) {
  Check("[ACTION]\nNAME = first\nNAME = second\n[INCLUDE]\n", 0);
  const GDSECTION action = gdGetSectByIndex(RUX_SECT_ACTION, 0);
  EXPECT_STREQ(gdGetSectName(action), "first");
  EXPECT_EQ(gdGetValue(gdGetEntryByIndex(action, 1)), "second");
  EXPECT_NE(gdGetSectByIndex(RUX_SECT_INCLUDE, 0), nullptr);
}

}  // namespace
