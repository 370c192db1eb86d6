// What gdInit makes of a file: whole ones and those of another format. What was loaded shows when
// it is written again.
#include "tests/api/debug_bytes.h"

namespace {

using DebugMetaReadTest = DebugTest;

// The header

TEST_F(DebugMetaReadTest, HeaderTellsVersionAndCreationTime) {
  tagMETAFILEINFO info = {7, 7};
  EXPECT_EQ(Load(WithNumber(DebugMeta({}, {}), 20, 0xFEDCBA98), &info), "1");
  EXPECT_EQ(info.version, 0x01000000u);
  EXPECT_EQ(info.creationTime, 0xFEDCBA98u);
}

TEST_F(DebugMetaReadTest, EmptyModelAddsNothing) {
  EXPECT_EQ(Load(DebugMeta({}, {})), "1");
  EXPECT_EQ(host::TakeMessages(), Lines{});
  for (std::uint32_t kind = 1; kind <= 14; ++kind) EXPECT_EQ(gdGetSectByIndex(kind, 0), nullptr);
  EXPECT_SAME_BYTES(OutputD(), DebugMeta({}, {}));
}

TEST_F(DebugMetaReadTest, BytesBetweenHeaderAndDataAreNotLookedAt) {
  EXPECT_EQ(Load(DebugMeta({}, {}).replace(24, 104, 104, 'x')), "1");
}

TEST_F(DebugMetaReadTest, MissingFileIsTold) {
  tagMETAFILEINFO info = {7, 7};
  EXPECT_EQ(gdInit(Path("none.metad"), &info), 0u);
  EXPECT_EQ(host::TakeMessages(),
            Lines{"ERROR: Open debug file " + Path("none.metad") + " failed.\n"});
  EXPECT_EQ(info.version, 7u);
}

// Whether loading is refused with that message and leaves nothing behind.
class RefusedFileTest : public DebugTest {
 protected:
  void ExpectRefusal(const std::string& bytes, const std::string& before_path,
                     const std::string& behind_path) {
    tagMETAFILEINFO info = {7, 7};
    EXPECT_EQ(Load(bytes, &info), "0");
    EXPECT_EQ(host::TakeMessages(), Lines{before_path + Path("hand.metad") + behind_path});
    EXPECT_EQ(info.version, 7u);
    EXPECT_EQ(info.creationTime, 7u);
    EXPECT_EQ(gdGetSectByIndex(RUX_SECT_PROPERTY, 0), nullptr);
  }
  void ExpectInvalid(const std::string& bytes) {
    ExpectRefusal(bytes, "ERROR: File ", " is invalid.\n");
  }
  void ExpectOtherVersion(const std::string& bytes) {
    ExpectRefusal(bytes, "ERROR: The version of file ", " is not support.\n");
  }
};

TEST_F(RefusedFileTest, EveryByteOfTheMagicCounts) {
  for (std::size_t i = 0; i < 16; ++i) {
    SCOPED_TRACE(i);
    std::string file = DebugMeta({}, {{PropertyRecord(List({}), {})}});
    file[i] ^= '\x20';
    ExpectInvalid(file);
  }
}

TEST_F(RefusedFileTest, MetaFileIsNoDebugMetaFile) {
  ExpectInvalid(ByteString().Terminated("MORV RUX meta.").Zeros(1).ZerosUpTo(256).str());
}

TEST_F(RefusedFileTest, OtherVersionsAreTold) {
  for (const std::uint32_t version : {0x00000001u, 0u, 0x01000001u, 0x02000000u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(version);
    ExpectOtherVersion(DebugMeta({}, {{PropertyRecord(List({}), {})}}, version));
  }
}

TEST_F(RefusedFileTest, CutInMagicOrVersion) {
  const std::string file = DebugMeta({}, {});
  for (std::size_t length = 0; length < 15; ++length) ExpectInvalid(file.substr(0, length));
  for (std::size_t length = 16; length < 20; ++length) ExpectOtherVersion(file.substr(0, length));
}

TEST_F(DebugMetaReadTest, CutBetweenVersionAndDataIsAnEmptyModel) {
  const std::string file = DebugMeta({}, {});
  for (std::size_t length = 20; length < 136; ++length) {
    SCOPED_TRACE(length);
    EXPECT_EQ(Load(file.substr(0, length)), "1");
  }
  EXPECT_SAME_BYTES(OutputD(), file);
}

// Sections and entries

TEST_F(DebugMetaReadTest, SectionsOfEveryKindButIncludeAreRestored) {
  std::vector<Texts> kinds;
  for (std::uint32_t kind = 1; kind <= 14; ++kind) {
    const std::string list = kinds.empty() ? List({"a.rux"}) : "";
    kinds.push_back({Section(Object(0x20000000 + kind, 2, 1, 0, "X") + list, {})});
  }
  ASSERT_EQ(Load(DebugMeta({}, kinds)), "1");
  for (std::uint32_t kind = 1; kind <= 13; ++kind) {
    EXPECT_NE(gdGetSectByIndex(kind, 0), nullptr) << kind;
    EXPECT_EQ(gdGetSectByIndex(kind, 1), nullptr) << kind;
  }
  EXPECT_EQ(gdGetSectByIndex(RUX_SECT_INCLUDE, 0), nullptr);
}

TEST_F(DebugMetaReadTest, SectionsFollowTheirIdentifiersWhateverBlockTheyStandIn) {
  const std::string first = PropertyRecord(List({"a.rux"}), {PropertyText("A", "1")});
  const std::string second = PropertyRecord("", {PropertyText("B", "2")});
  const std::string global = Section(Object(kGlobalSection, 2, 5, 0, "GLOBAL"), {});
  ASSERT_EQ(Load(DebugMeta({}, {{first, global}, {}, {second}})), "1");
  EXPECT_SAME_BYTES(OutputD(), DebugMeta({}, {{first, second}, {global}}));
}

TEST_F(DebugMetaReadTest, RecordsOfUnknownSectionsAreDroppedUnread) {
  const std::string known = PropertyRecord(List({"a.rux"}), {PropertyText("A", "1")});
  Texts sections;
  for (const std::uint32_t identifier :
       {0x2000000Eu, 0x2000000Fu, 0x20000000u, 0x01000002u, 0x10020017u, 0u, 0x20010002u}) {
    sections.push_back(Numbers({0xFFFFFFFF, identifier}));
  }
  sections.push_back(known);
  ASSERT_EQ(Load(DebugMeta({}, {sections})), "1");
  EXPECT_SAME_BYTES(OutputD(), DebugMeta({}, {{known}}));
}

TEST_F(DebugMetaReadTest, RecordsOfUnknownEntriesAreDroppedUnread) {
  Texts entries = {PropertyText("A", "1")};
  for (const std::uint32_t identifier :
       {0x10200001u, 0x10000001u, 0x10030001u, 0x20020017u, 0u, 0x00020017u}) {
    entries.push_back(Numbers({0xFFFFFFFF, identifier}));
  }
  entries.push_back(PropertyText("B", "2"));
  ASSERT_EQ(Load(DebugMeta({}, {{PropertyRecord(List({"a.rux"}), entries)}})), "1");
  EXPECT_SAME_BYTES(
      OutputD(),
      DebugMeta({}, {{PropertyRecord(List({"a.rux"}),  //
                                     {PropertyText("A", "1"), PropertyText("B", "2")})}}));
}

TEST_F(DebugMetaReadTest, RecordTooShortForAnIdentifierRaises) {
  const std::string list = List({"a.rux"});
  for (std::size_t length = 0; length < 8; ++length) {
    SCOPED_TRACE(length);
    const std::string zeros(length, '\0');
    InOwnProcess([&] { EXPECT_EQ(Load(DebugMeta({}, {{zeros}})), "vector"); });
    InOwnProcess(
        [&] { EXPECT_EQ(Load(DebugMeta({}, {{PropertyRecord(list, {zeros})}})), "vector"); });
  }
}

TEST_F(DebugMetaReadTest, EntriesFillTemplatesInPlaceAndFreeOnesFollow) {
  const auto entry = [](std::uint32_t identifier, std::uint32_t notation, std::uint32_t line,
                        const std::string& name) {
    return Entry(Object(identifier, notation, line, 0, name), StringPayload(identifier, name));
  };
  const std::string object = Object(kActionSection, 2, 1, 0, "ACTION") + List({"a.rux"});
  const std::string free1 = Entry(Object(0x10080007, 14, 2, 0, "VALUE_1"),
                                  ValuePayload(0x10080007, 1, "T", Fields({"5"})));
  const std::string free2 = Entry(Object(0x10080007, 14, 3, 0, "VALUE_2"),
                                  ValuePayload(0x10080007, 1, "T", Fields({"6"})));
  const std::string argnumber = entry(0x10028010, 2, 4, "ARGNUMBER");
  const std::string name = entry(kNameEntry, 1, 5, "NAME");
  ASSERT_EQ(Load(DebugMeta({}, {{Section(object, {free1, argnumber, free2, name})}})), "1");
  EXPECT_SAME_BYTES(OutputD(),
                    DebugMeta({}, {{Section(object, {name, argnumber, Template(0x10080006, 38),
                                                     Template(kValueEntry, 38), free1, free2})}}));
}

TEST_F(DebugMetaReadTest, EntriesOfOneIdentifierCollapseIntoTheLast) {
  const auto name = [](std::uint32_t notation, std::uint32_t line, const char* text) {
    return Entry(Object(kNameEntry, notation, line, 0, "NAME"), StringPayload(kNameEntry, text));
  };
  const std::string table = Object(0x20000008, 2, 1, 0, "TABLE") + List({"a.rux"});
  const std::string property = Object(kPropertySection, 2, 9, 0, "PROPERTY");
  const std::string type = Template(0x10028002, 1);
  ASSERT_EQ(Load(DebugMeta({}, {{Section(table, {name(1, 2, "first"), type, name(2, 3, "second"),
                                                 name(2, 4, "third")})},
                                {Section(property, {name(2, 5, "fourth"), name(2, 6, "fifth")})}})),
            "1");
  EXPECT_SAME_BYTES(OutputD(), DebugMeta({}, {{Section(table, {name(2, 4, "third"), type})},
                                              {Section(property, {name(2, 6, "fifth")})}}));
}

// Defined words

TEST_F(DebugMetaReadTest, KnownWordKeepsItsValue) {
  Parse("[DEFINE]\nB = 1\n");
  ASSERT_EQ(Load(DebugMeta({{"A", 5}, {"B", 6}, {"A", 7}, {"C", 8}}, {})), "1");
  const std::string words = Numbers({3}) + Counted("A") + Numbers({5}) + Counted("B") +
                            Numbers({1}) + Counted("C") + Numbers({8});
  EXPECT_SAME_BYTES(OutputD().substr(128, words.size()), words);
}

// Source files

TEST_F(DebugMetaReadTest, LoadedEntriesKnowTheirFileAndLine) {
  ASSERT_EQ(Load(DebugMeta({}, {{Section(Object(kPropertySection, 2, 3, 0, "PROPERTY") +
                                             List({"b\\one.rux", "b\\two.rux"}),
                                         {Entry(Object(kPropertyEntry, 10, 17, 1, "A"),
                                                StringPayload(kPropertyEntry, "x"))})}})),
            "1");
  // The parts of the text are not kept, so the check misses them.
  EXPECT_EQ(gccCheck(), 0u);
  EXPECT_EQ(host::TakeMessages(), Lines{"Error[two.rux:17]: [PROPERTY]:A, No sub-string.\n"});
}

TEST_F(DebugMetaReadTest, SecondLoadAddsSectionsButNoSourceFiles) {
  const auto section = [](const std::string& list, const char* entry) {
    return PropertyRecord(list, {PropertyText(entry, "x")});
  };
  ASSERT_EQ(Load(DebugMeta({}, {{section(List({"a.rux"}), "A")}})), "1");
  ASSERT_EQ(Load(DebugMeta({}, {{section(List({"b.rux", "c.rux"}), "B")}})), "1");
  ASSERT_EQ(Load(DebugMeta({}, {{section("", "C")}})), "1");
  EXPECT_SAME_BYTES(
      OutputD(),
      DebugMeta({}, {{section(List({"a.rux"}), "A"), section("", "B"), section("", "C")}}));
}

TEST_F(DebugMetaReadTest, ListOfNoFilesIsTheOneOfTheProcessToo) {
  ASSERT_EQ(Load(DebugMeta({}, {{PropertyRecord(List({}), {})}})), "1");
  ASSERT_EQ(Load(DebugMeta({}, {{PropertyRecord(List({"b.rux"}), {})}})), "1");
  EXPECT_SAME_BYTES(OutputD(),
                    DebugMeta({}, {{PropertyRecord(List({}), {}), PropertyRecord("", {})}}));
}

TEST_F(DebugMetaReadTest, FileWithoutSectionsLeavesTheSourceFilesToTheNextOne) {
  ASSERT_EQ(Load(DebugMeta({{"A", 1}}, {})), "1");
  const std::string file = DebugMeta({{"A", 1}}, {{PropertyRecord(List({"a.rux"}), {})}});
  ASSERT_EQ(Load(file), "1");
  EXPECT_SAME_BYTES(OutputD(), file);
}

TEST_F(DebugMetaReadTest, SourceFilesOfTheFileFollowThoseOfAScript) {
  Parse("[PROPERTY]\n");
  ASSERT_EQ(Load(DebugMeta({}, {{PropertyRecord(List({"a.rux", "a.rux"}), {})}})), "1");
  EXPECT_SAME_BYTES(OutputD(),
                    DebugMeta({}, {{Section(Object(kPropertySection, 2, 1, 0, "PROPERTY") +
                                                List({ScriptPath("board.rux"), "a.rux", "a.rux"}),
                                            {}),
                                    PropertyRecord("", {})}}));
}

TEST_F(DebugMetaReadTest, IncludeFirstTakesTheSourceFilesAwayAndRaises) {
  const std::string include =
      Section(Object(kIncludeSection, 2, 1, 0, "INCLUDE") + List({"a.rux", "sub.rux"}),
              {Entry(Object(kFileEntry, 2, 2, 0, "FILE"), StringPayload(kFileEntry, "sub.rux"))});
  InOwnProcess([&] { EXPECT_EQ(Load(DebugMeta({}, {{include}})), "1"); });
  InOwnProcess([&] {
    EXPECT_EQ(Load(DebugMeta({}, {{include}, {PropertyRecord("", {})}})), "vector");
    EXPECT_EQ(host::TakeMessages(), Lines{});
  });
  InOwnProcess([&] {
    ASSERT_EQ(Load(DebugMeta({}, {{PropertyRecord(List({"a.rux"}), {})}})), "1");
    EXPECT_EQ(Load(DebugMeta({}, {{include}, {PropertyRecord("", {})}})), "1");
  });
}

TEST_F(DebugMetaReadTest, FirstFileOfAProcessMustHaveSourceFiles) {
  EXPECT_EQ(Load(DebugMeta({}, {{PropertyRecord("", {})}})), "vector");
}

}  // namespace
