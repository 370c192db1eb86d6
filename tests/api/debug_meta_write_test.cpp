// What gccOutputD writes: whole files, byte by byte.
#include <ctime>
#include <filesystem>

#include "tests/api/debug_bytes.h"

namespace {

using DebugMetaWriteTest = DebugTest;

// The section record of a PROPERTY section without entries.
std::string Property(std::uint32_t line, std::uint32_t file, const std::string& list) {
  return Section(Object(kPropertySection, 2, line, file, "PROPERTY") + list, {});
}

TEST_F(DebugMetaWriteTest, FormatWordsAreExported) {
  EXPECT_EQ(RUXD_VERSION, 0x01000000u);
  EXPECT_EQ(RUXD_DATA_OFFSET, 0x80u);
}

TEST_F(DebugMetaWriteTest, EmptyModelTakesOneHundredAndThirtySixBytes) {
  ByteString expected;
  expected.Text("MORV RUX metaD.").Zeros(1);
  expected.Text(std::string("\0\0\0\1", 4)).Zeros(4);  // version, creation time
  expected.Zeros(104);
  expected.Words({0, 0});  // defined words, section kinds
  ASSERT_EQ(expected.size(), 136u);
  EXPECT_SAME_BYTES(CompileD(""), expected.str());
}

TEST_F(DebugMetaWriteTest, CreationTimeIsTheTimeOfTheCall) {
  const std::string before = Numbers({static_cast<std::uint32_t>(std::time(nullptr))});
  ASSERT_EQ(gccOutputD(Path("board.metad")), 1u);
  const std::string after = Numbers({static_cast<std::uint32_t>(std::time(nullptr))});
  const std::string stamp = ReadAll("board.metad").substr(20, 4);
  // At most one second begins in between.
  EXPECT_TRUE(stamp == before || stamp == after) << HexDump(stamp);
}

TEST_F(DebugMetaWriteTest, WordsAndSectionsWithTheirEntriesByteByByte) {
  Write("b.rux", "[DEFINE]\nB = 0x10\nA = B\n[ACTION]\nNAME = \"x y\"\n");
  std::filesystem::current_path(folder());
  ASSERT_EQ(gccCompStart("b.rux"), 1u);
  gccParse();
  ASSERT_EQ(gccCheck(), 1u);

  ByteString expected;
  expected.Text("MORV RUX metaD.").Zeros(1).Words({0x01000000, 0}).ZerosUpTo(128);
  expected.Words({2});  // defined words
  expected.Words({1}).Text("A").Words({16});
  expected.Words({1}).Text("B").Words({16});
  expected.Words({2});                                          // kinds
  expected.Words({1, 129});                                     // one section, its record:
  expected.Words({39, 0x2000000C, 2, 1, 0, 6}).Text("DEFINE");  // the section itself
  expected.Words({1, 5}).Text("b.rux");                         // source files
  expected.Words({2, 37});                                      // two entries, the first:
  expected.Words({21, 0x10010001, 10, 2, 0, 1}).Text("B");      // the entry itself
  expected.Words({8, 0x10010001, 16});                          // its payload
  expected.Words({37, 21, 0x10010001, 10, 3, 0, 1}).Text("A");
  expected.Words({8, 0x10010001, 16});
  expected.Words({1, 189});                                     // the other kind
  expected.Words({26, 0x20000007, 2, 4, 0, 6}).Text("ACTION");  // no source files any more
  expected.Words({4, 43});
  expected.Words({24, 0x10020015, 1, 5, 0, 4}).Text("NAME");
  expected.Words({11, 0x10020015, 3}).Text("x y");
  expected.Words({32, 20, 0x10028010, 2, 0, 0, 0, 4, 0});   // ARGNUMBER, not given
  expected.Words({32, 20, 0x10080006, 38, 0, 0, 0, 4, 0});  // VALUE_IPMI
  expected.Words({32, 20, 0x10080000, 38, 0, 0, 0, 4, 0});  // VALUE
  EXPECT_SAME_BYTES(OutputD(), expected.str());
}

TEST_F(DebugMetaWriteTest, WordsStandInTheByteOrderOfTheirNames) {
  const std::string file =
      CompileD("[DEFINE]\na = 1\n\xC3\xA4 = 2\nB = 3\nAB = 4\nA = 5\n_ = 6\nB = 7\n");
  const std::string words = Numbers({6}) + Counted("A") + Numbers({5}) + Counted("AB") +
                            Numbers({4}) + Counted("B") + Numbers({7}) + Counted("_") +
                            Numbers({6}) + Counted("a") + Numbers({1}) + Counted("\xC3\xA4") +
                            Numbers({2}) + Numbers({1});  // the count of kinds
  EXPECT_SAME_BYTES(file.substr(128, words.size()), words);
}

TEST_F(DebugMetaWriteTest, WordKeepsTheValueOfTheReadingAndItsEntryTakesTheOneOfTheCheck) {
  const std::string file = CompileD("[DEFINE]\nA = 1\nB = A\nA = 2\n");
  const auto entry = [](const char* name, std::uint32_t line, std::uint32_t value) {
    return Entry(Object(kWordEntry, 10, line, 0, name), Numbers({kWordEntry, value}));
  };
  EXPECT_SAME_BYTES(file,
                    DebugMeta({{"A", 2}, {"B", 1}},
                              {{Section(Object(kDefineSection, 2, 1, 0, "DEFINE") + BoardOnly(),
                                        {entry("A", 2, 1), entry("B", 3, 2), entry("A", 4, 2)})}}));
}

TEST_F(DebugMetaWriteTest, SourceFilesStandInTheFirstObjectOfTheProcessOnly) {
  const std::string script = "[PROPERTY]\n[PROPERTY]\n[GLOBAL]\n";
  const std::string global = Section(Object(kGlobalSection, 2, 3, 0, "GLOBAL"), {});
  EXPECT_SAME_BYTES(CompileD(script), DebugMeta({}, {{Property(1, 0, BoardOnly()),  //
                                                      Property(2, 0, "")},
                                                     {global}}));
  const std::string again = DebugMeta({}, {{Property(1, 0, ""), Property(2, 0, "")}, {global}});
  EXPECT_SAME_BYTES(OutputD(), again);
  gccCompEnd();
  EXPECT_SAME_BYTES(CompileD(script), again);
}

TEST_F(DebugMetaWriteTest, FileWithoutSectionsLeavesTheSourceFilesToTheNextOne) {
  Parse("[PROPERTY]\n");
  gccCompEnd();
  // The kind stays known, with no sections; no object was written yet.
  EXPECT_SAME_BYTES(OutputD(), DebugMeta({}, {{}}));

  Write("second.rux", "[GLOBAL]\n[PROPERTY]\n");
  ASSERT_EQ(gccCompStart(ScriptPath("second.rux")), 1u);
  gccParse();
  const std::string both = List({ScriptPath("board.rux"), ScriptPath("second.rux")});
  EXPECT_SAME_BYTES(OutputD(),
                    DebugMeta({}, {{Property(2, 1, both)},
                                   {Section(Object(kGlobalSection, 2, 1, 1, "GLOBAL"), {})}}));
}

TEST_F(DebugMetaWriteTest, FileThatCannotBeCreatedIsToldAndLeavesTheSourceFilesToTheNextOne) {
  Parse("[PROPERTY]\n");
  const std::string nowhere = Path("missing/board.metad");
  EXPECT_EQ(gccOutputD(nowhere), 0u);
  EXPECT_EQ(host::TakeMessages(), Lines{"ERROR: Create debug file " + nowhere + " failed.\n"});
  EXPECT_FALSE(std::filesystem::exists(nowhere));
  EXPECT_SAME_BYTES(OutputD(), DebugMeta({}, {{Property(1, 0, BoardOnly())}}));
}

TEST_F(DebugMetaWriteTest, LongerFileIsReplaced) {
  Write("board.metad", std::string(10000, 'x'));
  EXPECT_SAME_BYTES(CompileD(""), DebugMeta({}, {}));
}

TEST_F(DebugMetaWriteTest, FailingWritesGoUnnoticed) {
  Parse("[PROPERTY]\n");
  EXPECT_EQ(gccOutputD("/dev/full"), 1u);
  EXPECT_EQ(host::TakeMessages(), Lines{});
}

TEST_F(DebugMetaWriteTest, KindsStandInTheOrderOfTheirFirstSections) {
  EXPECT_SAME_BYTES(
      CompileD("[REPEATER]\n[GLOBAL]\n[PROPERTY]\n[GLOBAL]\n[REPEATER]\n"),
      DebugMeta({}, {{Section(Object(kRepeaterSection, 2, 1, 0, "REPEATER") + BoardOnly(), {}),
                      Section(Object(kRepeaterSection, 2, 5, 0, "REPEATER"), {})},
                     {Section(Object(kGlobalSection, 2, 2, 0, "GLOBAL"), {}),
                      Section(Object(kGlobalSection, 2, 4, 0, "GLOBAL"), {})},
                     {Property(3, 0, "")}}));
}

TEST_F(DebugMetaWriteTest, IncludedSectionsNameTheirOwnFileAndIncludeIsWrittenToo) {
  Write("sub.rux", "\n[GLOBAL]\n");
  const std::string files = List({ScriptPath("board.rux"), ScriptPath("sub.rux")});
  EXPECT_SAME_BYTES(CompileD("[PROPERTY]\n[INCLUDE]\nFILE = sub.rux\n[PROPERTY]\n"),
                    DebugMeta({}, {{Property(1, 0, files), Property(4, 0, "")},
                                   {Section(Object(kIncludeSection, 2, 2, 0, "INCLUDE"),
                                            {Entry(Object(kFileEntry, 2, 3, 0, "FILE"),
                                                   StringPayload(kFileEntry, "sub.rux"))})},
                                   {Section(Object(kGlobalSection, 2, 2, 1, "GLOBAL"), {})}}));
}

TEST_F(DebugMetaWriteTest, RepeatedKeyIsAnEntryOfItsOwnBehindTheTemplates) {
  const auto name = [](std::uint32_t notation, std::uint32_t line, const char* text) {
    return Entry(Object(kNameEntry, notation, line, 0, "NAME"), StringPayload(kNameEntry, text));
  };
  EXPECT_SAME_BYTES(
      CompileD("[ACTION]\nNAME = a\nNAME = b\n"),
      DebugMeta({}, {{Section(Object(kActionSection, 2, 1, 0, "ACTION") + BoardOnly(),
                              {name(1, 2, "a"), Template(0x10028010, 2), Template(0x10080006, 38),
                               Template(kValueEntry, 38), name(2, 3, "b")})}}));
}

// A failed check keeps what it found until then: nothing for a value of an unknown type, the type
// alone when parts are missing, and a required entry that is missing has no name again.
TEST_F(DebugMetaWriteTest, ModelThatFailedTheCheckIsWrittenAsTheCheckLeftIt) {
  Parse("[DEFINE]\nT = 10\n[GLOBAL]\nG_A = NOPE,1\nG_B = T,1\n[MORVRUX]\n");
  EXPECT_EQ(gccCheck(), 0u);
  const auto value = [](const char* name, std::uint32_t line, const std::string& payload) {
    return Entry(Object(kGlobalEntry, 46, line, 0, name), payload);
  };
  EXPECT_SAME_BYTES(
      OutputD(),
      DebugMeta(
          {{"T", 10}},
          {{Section(Object(kDefineSection, 2, 1, 0, "DEFINE") + BoardOnly(),
                    {Entry(Object(kWordEntry, 10, 2, 0, "T"), Numbers({kWordEntry, 10}))})},
           {Section(Object(kGlobalSection, 2, 3, 0, "GLOBAL"),
                    {value("G_A", 4, ValuePayload(kGlobalEntry, 0, "", "")),
                     value("G_B", 5, ValuePayload(kGlobalEntry, 10, "T", Fields({"", ""})))})},
           {Section(Object(0x20000001, 1, 6, 0, "MORVRUX"), {Template(0x10020001, 1)})}}));
}

struct Kind {
  std::string keyword;
  std::uint32_t identifier;
  std::uint32_t notation;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> templates;  // identifier, notation
};

const Kind kKinds[] = {
    {"MORVRUX", 0x20000001, 1, {{0x10020001, 1}}},
    {"PROPERTY", 0x20000002, 2, {}},
    {"SYSTEM",
     0x20000003,
     1,
     {{0x10028002, 1},
      {0x10020013, 1},
      {0x10028003, 1},
      {0x10028004, 2},
      {0x10028005, 2},
      {0x10028006, 1}}},
    {"GROUP",
     0x20000004,
     2,
     {{0x10020014, 1},
      {0x10020015, 1},
      {0x10028007, 1},
      {0x10080002, 6},
      {0x10080003, 6},
      {0x10080004, 6},
      {0x10080005, 6}}},
    {"SENSOR",
     0x20000005,
     2,
     {{0x10020014, 1},
      {0x10020015, 1},
      {0x10028008, 1},
      {0x10028002, 1},
      {0x10028009, 1},
      {0x1002800A, 1},
      {0x1002800B, 2},
      {0x1002800C, 2},
      {0x1002800D, 2},
      {0x1002800E, 2},
      {0x1002800F, 2},
      {0x10080002, 6},
      {0x10080003, 6},
      {0x10080004, 6},
      {0x10080005, 6},
      {0x10080000, 37},
      {0x10080006, 38}}},
    {"DEVICE", 0x20000006, 2, {{0x10020015, 1}, {0x10028008, 1}, {0x10028009, 1}, {0x1002800A, 1}}},
    {"ACTION",
     0x20000007,
     2,
     {{0x10020015, 1}, {0x10028010, 2}, {0x10080006, 38}, {0x10080000, 38}}},
    {"TABLE", 0x20000008, 2, {{0x10020015, 1}, {0x10028002, 1}}},
    {"PELMGROUP",
     0x20000009,
     1,
     {{0x10020015, 1}, {0x10028008, 1}, {0x10028011, 1}, {0x10048001, 1}}},
    {"GLOBAL", 0x2000000A, 2, {}},
    {"REPEATER", 0x2000000B, 2, {}},
    {"DEFINE", 0x2000000C, 2, {}},
    {"IFDEF", 0x2000000D, 2, {{0x10020016, 1}}},
    {"INCLUDE", 0x2000000E, 2, {}},
};

void PrintTo(const Kind& kind, std::ostream* out) { *out << kind.keyword; }

class SectionKindTest : public DebugTest, public testing::WithParamInterface<Kind> {};

TEST_P(SectionKindTest, EmptySectionIsItsTemplatesWithoutNameAndPayload) {
  Texts entries;
  for (const auto& [identifier, notation] : GetParam().templates) {
    entries.push_back(Template(identifier, notation));
  }
  const std::string object =
      Object(GetParam().identifier, GetParam().notation, 1, 0, GetParam().keyword);
  Parse("[" + GetParam().keyword + "]\n");
  EXPECT_SAME_BYTES(OutputD(), DebugMeta({}, {{Section(object + BoardOnly(), entries)}}));
}

INSTANTIATE_TEST_SUITE_P(EveryKind, SectionKindTest, testing::ValuesIn(kKinds),
                         [](const auto& row) { return row.param.keyword; });

}  // namespace
