// What reading makes of whole and broken meta files.
#include <sys/resource.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <tuple>

#include "tests/api/meta_sample.h"

namespace {

// The symbol tables and counters as a whole.
auto Tables() {
  return std::make_tuple(std::make_tuple(g_tblProperty, g_tblGlobal, g_tblValue, g_tblRepeater),
                         std::make_tuple(g_tblDword, g_tblString, g_tblTableData),
                         std::make_tuple(g_tblGroup, g_tblAction, g_tblTableName),
                         Hex({g_idxProperty, g_idxGlobal, g_idxValue, g_idxRepeater, g_idxDword,
                              g_idxString, g_idxGroup, g_idxAction, g_idxTableName}));
}

// Puts something into every table that no file holds, so that reading must replace it.
void SpoilTables() {
  for (auto* table : {&g_tblProperty, &g_tblGlobal, &g_tblValue, &g_tblRepeater, &g_tblString,
                      &g_tblGroup, &g_tblAction, &g_tblTableName}) {
    *table = {{"spoiled", 0x7F000000}};
  }
  for (auto* counter : {&g_idxProperty, &g_idxGlobal, &g_idxValue, &g_idxRepeater, &g_idxDword,
                        &g_idxString, &g_idxGroup, &g_idxAction, &g_idxTableName}) {
    *counter += 1000;
  }
  g_tblDword = {{4711, 0x7F000000}};
  g_tblTableData.assign(3, 0x7F);
}

// The bytes with others from that offset on.
std::string Replaced(std::string bytes, std::size_t offset, const std::string& others) {
  return bytes.replace(offset, others.size(), others);
}

class MetaReadTest : public MetaTest {};

TEST_F(MetaReadTest, ReadingGivesTheTablesAndCountersBack) {
  Compile(kCompleteScript);
  const auto written = Tables();
  SpoilTables();
  ASSERT_EQ(gcInit(Path("board.meta")), 1u);
  EXPECT_EQ(Tables(), written);
}

TEST_F(MetaReadTest, ReadingGivesTheSectionsBackAsTheyStandInTheFile) {
  const std::string meta = CompleteMeta().str();
  ASSERT_EQ(Load(meta), 1u);
  ByteString sections;
  sections.Words({11});
  for (const std::uint32_t kind : {1u, 2u, 3u, 4u, 9u, 5u, 6u, 7u, 8u, 10u, 11u}) {
    const GCSECTION section = gcGetSectByIndex(0x01000000 + kind, 0);
    sections.Words({0x01000000 + kind, gcGetEntryCount(section)});
    for (std::uint32_t i = 0; i < gcGetEntryCount(section); ++i) {
      std::uint32_t identifier = 0;
      const GCENTRY entry = gcGetEntryByIndex(section, i, &identifier);
      sections.Words({identifier, gcGetValueCount(entry)});
      for (const std::uint32_t value : ValuesOf(entry)) sections.Words({value});
    }
  }
  EXPECT_BYTES(meta.substr(256, 604), sections);
}

TEST_F(MetaReadTest, IdentifiersAndValuesAreTakenAsTheyAre) {
  ASSERT_EQ(Load(MetaBytes().Section(0xFFFFFFFF, {{0, {0, 0xFFFFFFFF, 1}}, {7, {}}}).str()), 1u);
  EXPECT_EQ(gcGetSectCount(0xFFFFFFFF), 1u);
  EXPECT_EQ(Hex(ValuesOf(0xFFFFFFFF, 0)), "0x00000000 0xFFFFFFFF 0x00000001");
  EXPECT_EQ(Hex(EntryIds(gcGetSectByIndex(0xFFFFFFFF, 0))), "0x00000000 0x00000007");
}

TEST_F(MetaReadTest, VersionAndTimeAreToldToWhoAsks) {
  tagMETAFILEINFO info{};
  Write("hand.meta", Replaced(CompleteMeta().str(), 20, "\x78\x56\x34\x92"));
  ASSERT_EQ(gcInit(Path("hand.meta"), &info), 1u);
  EXPECT_EQ(info.version, 0x01000000u);
  EXPECT_EQ(info.creationTime, 0x92345678u);
  gcUnInit();
  EXPECT_EQ(gcInit(Path("hand.meta"), nullptr), 1u);
}

TEST_F(MetaReadTest, AWrongByteInTheMagicIsRefused) {
  const std::string meta = CompleteMeta().str();
  for (std::size_t i = 0; i < 15; ++i) {
    SCOPED_TRACE(i);
    gcSetLastError(99);
    EXPECT_EQ(Load(Replaced(meta, i, "x")), 0u);
    EXPECT_EQ(gcGetLastError(), 13u);
  }
}

TEST_F(MetaReadTest, NothingIsReadOfTheBytesThatTheLayoutDoesNotName) {
  std::string meta = CompleteMeta().str();
  meta = Replaced(meta, 15, "x");                       // after the magic's terminating zero
  meta = Replaced(meta, 24, std::string(104, '\xFF'));  // up to the directory
  meta = Replaced(meta, 172, std::string(84, '\xFF'));  // from its end to the sections
  meta = Replaced(meta, 860, std::string(4, '\xFF'));   // padding
  EXPECT_EQ(Load(meta), 1u);
  EXPECT_EQ(g_tblProperty.size(), 3u);
}

TEST_F(MetaReadTest, AWrongByteInTheVersionIsRefused) {
  const std::string meta = CompleteMeta().str();
  for (std::size_t i = 16; i < 20; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(Load(Replaced(meta, i, "\x02")), 0u);
    EXPECT_EQ(gcGetLastError(), 13u);
  }
}

TEST_F(MetaReadTest, ARefusedFileLeavesWhatWasLoadedAndTheInfo) {
  ASSERT_EQ(Load(CompleteMeta().str()), 1u);
  const auto loaded = Tables();
  Write("magic.meta", std::string(1432, 'x'));
  Write("version.meta", Replaced(CompleteMeta().str(), 16, "\x02"));
  for (const char* name : {"magic.meta", "version.meta", "none.meta"}) {
    SCOPED_TRACE(name);
    tagMETAFILEINFO info{17, 18};
    EXPECT_EQ(gcInit(Path(name), &info), 0u);
    EXPECT_EQ(gcGetLastError(), 13u);
    EXPECT_EQ(info.version, 17u);
    EXPECT_EQ(info.creationTime, 18u);
    EXPECT_EQ(gcGetSectCount(0x01000005), 1u);
    EXPECT_EQ(Tables(), loaded);
  }
}

TEST_F(MetaReadTest, FoldersDevicesAndMissingFilesCannotBeRead) {
  for (const std::string& path :
       {Path("none.meta"), folder(), Path("no/such.meta"), "/dev/null"s, ""s}) {
    SCOPED_TRACE(path);
    gcSetLastError(99);
    EXPECT_EQ(gcInit(path), 0u);
    EXPECT_EQ(gcGetLastError(), 13u);
  }
}

TEST_F(MetaReadTest, AFileCutAtAnyLengthIsRefused) {
  const std::string meta = CompleteMeta().str();
  ASSERT_EQ(Load(meta), 1u);
  gcUnInit();
  for (std::size_t length = meta.size(); length-- > 0;) {
    SCOPED_TRACE(length);
    std::filesystem::resize_file(Path("hand.meta"), length);
    ASSERT_EQ(gcInit(Path("hand.meta")), 0u);
    ASSERT_EQ(gcGetLastError(), 13u);
    gcUnInit();
  }
}

// Asks for everything that was loaded.
void AskForEverything() {
  for (std::uint32_t kind = 0x01000001; kind <= 0x0100000B; ++kind) {
    for (std::uint32_t i = 0; const GCSECTION section = gcGetSectByIndex(kind, i); ++i) {
      gcGetEntryByName(section, "none", nullptr);
      for (std::uint32_t j = 0; const GCENTRY entry = gcGetEntryByIndex(section, j, nullptr); ++j) {
        ValuesOf(entry);
        gcGetValueByID(entry, 0x40001);
      }
    }
  }
}

TEST_F(MetaReadTest, AnyOtherByteAnywhereHasADefinedOutcome) {
  const std::string meta = CompleteMeta().str();
  Write("hand.meta", meta);
  std::fstream file(Path("hand.meta"), std::ios::in | std::ios::out | std::ios::binary);
  const auto put = [&](std::size_t offset, char byte) {
    file.seekp(static_cast<std::streamoff>(offset)).put(byte).flush();
  };
  for (std::size_t i = 0; i < meta.size(); ++i) {
    SCOPED_TRACE(i);
    for (const char byte : {'\x01', '\xFF'}) {
      put(i, byte);
      const std::uint32_t read = gcInit(Path("hand.meta"));
      ASSERT_EQ(gcGetLastError(), read == 1 ? 0u : 13u);
      AskForEverything();
      gcUnInit();
    }
    put(i, meta[i]);
  }
  ASSERT_TRUE(file);
  EXPECT_EQ(gcInit(Path("hand.meta")), 1u);
}

TEST_F(MetaReadTest, AFileThatEndsEarlyFillsTheTablesUpToThere) {
  Load(MetaBytes().Strings(0x04000000, {"old"}).Strings(0x05000000, {"old"}).str());
  const std::string meta = MetaBytes()
                               .Section(0x01000002, {})
                               .Strings(0x03000000, {"A"})
                               .Strings(0x04000000, {"B", "C"})
                               .str();
  EXPECT_EQ(Load(meta.substr(0, meta.size() - 1)), 0u);
  EXPECT_EQ(gcGetSectCount(0x01000002), 1u);
  EXPECT_EQ(g_tblProperty, (Names{{"A", 0x03000000}}));
  EXPECT_EQ(g_tblValue, (Names{{"old", 0x05000000}}));
}

TEST_F(MetaReadTest, CellsOfTheFileBeforeDoNotStandInForThoseThatAreCutOff) {
  ASSERT_EQ(Load(MetaBytes().Block(0x1B000000, std::string(256, 'x')).str()), 1u);
  const std::string meta = MetaBytes().Block(0x1B000000, std::string(256, 'y')).str();
  EXPECT_EQ(Load(meta.substr(0, meta.size() - 1)), 0u);
  std::uint8_t cells[256] = {};
  EXPECT_EQ(gcGetTableData(0, cells), 0u);
  EXPECT_EQ(gcGetLastError(), 4u);
}

TEST_F(MetaReadTest, TablesThatTheDirectoryDoesNotListStayAsTheyAre) {
  Compile(kCompleteScript);
  gccCompEnd();
  const Names values = g_tblValue;
  const Numbers numbers = g_tblDword;
  const std::vector<std::uint8_t> cells = g_tblTableData;
  ASSERT_EQ(Load(MetaBytes().Strings(0x03000000, {"A"}).str()), 1u);
  EXPECT_EQ(g_tblProperty, (Names{{"A", 0x03000000}}));
  EXPECT_EQ(Hex({g_idxProperty}), "0x03000001");
  EXPECT_EQ(g_tblValue, values);
  EXPECT_EQ(g_tblDword, numbers);
  EXPECT_EQ(g_tblTableData, cells);
  EXPECT_EQ(Hex({g_idxValue}), "0x05000008");
}

TEST_F(MetaReadTest, BlocksAreKnownByTheirClassInAnyOrder) {
  ASSERT_EQ(Load(MetaBytes()
                     .Block(0x1B000000, "cells"s)
                     .Strings(0x1C000000, {"T"})
                     .Numbers({5})
                     .Strings(0x03000000, {"A"})
                     .Strings(0x03000000, {"B"})  // once more: replaces the first
                     .str()),
            1u);
  EXPECT_EQ(std::string(g_tblTableData.begin(), g_tblTableData.end()), "cells");
  EXPECT_EQ(g_tblTableName, (Names{{"T", 0x1C000000}}));
  EXPECT_EQ(g_tblDword, (Numbers{{5, 0x11000000}}));
  EXPECT_EQ(g_tblProperty, (Names{{"B", 0x03000000}}));
}

TEST_F(MetaReadTest, ABlockOfAnUnknownClassIsPassedOver) {
  for (const std::uint32_t base : {0x02000000u, 0x1D000000u, 0x1E000000u, 0x03000001u, 0u}) {
    SCOPED_TRACE(base);
    EXPECT_EQ(Load(MetaBytes()
                       .Strings(0x03000000, {"A"})
                       .Block(base, 0xFFFFFFFF, "whatever")
                       .Strings(0x04000000, {"G"})
                       .str()),
              1u);
    EXPECT_EQ(g_tblGlobal, (Names{{"G", 0x04000000}}));
    SpoilTables();
    gcUnInit();
  }
}

TEST_F(MetaReadTest, ABlockOfLengthZeroEmptiesItsTable) {
  SpoilTables();
  ASSERT_EQ(Load(MetaBytes().Strings(0x03000000, {}).Numbers({}).Block(0x1B000000, ""s).str()), 1u);
  EXPECT_EQ(g_tblProperty, Names{});
  EXPECT_EQ(g_tblDword, Numbers{});
  EXPECT_TRUE(g_tblTableData.empty());
  EXPECT_EQ(Hex({g_idxProperty, g_idxDword}), "0x03000000 0x11000000");
}

TEST_F(MetaReadTest, ARepeatedItemTakesAnOrdinalAndKeepsItsFirstIndex) {
  ASSERT_EQ(Load(MetaBytes()
                     .Strings(0x03000000, {"A", "", "", "B", "A", "C"})
                     .Numbers({7, 7, 8, 7})
                     .str()),
            1u);
  EXPECT_EQ(g_tblProperty,
            (Names{{"A", 0x03000000}, {"", 0x03000001}, {"B", 0x03000003}, {"C", 0x03000005}}));
  EXPECT_EQ(g_tblDword, (Numbers{{7, 0x11000000}, {8, 0x11000002}}));
  EXPECT_EQ(Hex({g_idxProperty, g_idxDword}), "0x03000006 0x11000004");
}

TEST_F(MetaReadTest, TheLargestNumberIsANumberOfItsBlock) {
  ASSERT_EQ(Load(MetaBytes().Numbers({1, 0xFFFFFFFF, 2}).str()), 1u);
  EXPECT_EQ(g_tblDword, (Numbers{{1, 0x11000000}, {0xFFFFFFFF, 0x11000001}, {2, 0x11000002}}));
}

// Nothing of it is taken: where its items end cannot be known.
TEST_F(MetaReadTest, ABlockThatIsLongerThanTheFileIsRefused) {
  for (const std::uint32_t base : {0x03000000u, 0x11000000u, 0x1B000000u}) {
    for (const std::uint32_t length : {5u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
      SCOPED_TRACE(base + length);
      SpoilTables();
      EXPECT_EQ(Load(MetaBytes()
                         .Section(0x01000002, {})
                         .Strings(0x04000000, {"G"})
                         .Block(base, length, "A\0B\0"s)
                         .str()),
                0u);
      EXPECT_EQ(gcGetLastError(), 13u);
      EXPECT_EQ(gcGetSectCount(0x01000002), 1u);
      EXPECT_EQ(g_tblGlobal, (Names{{"G", 0x04000000}}));
      EXPECT_EQ(g_tblProperty.empty(), base == 0x03000000);
      EXPECT_EQ(g_tblDword.empty(), base == 0x11000000);
      gcUnInit();
    }
  }
}

// Zero words after the header end a directory of any length; here it has none.
TEST_F(MetaReadTest, ADirectoryWithoutEndIsRefused) {
  std::string meta = MetaBytes().Section(0x01000002, {}).Strings(0x03000000, {"A"}).str();
  for (std::size_t slot = 132; slot < 256; slot += 4) meta.replace(slot, 4, meta, 128, 4);
  EXPECT_EQ(Load(meta), 0u);
  EXPECT_EQ(gcGetLastError(), 13u);
}

TEST_F(MetaReadTest, ADirectoryMayGoOnUpToTheSections) {
  std::string meta = MetaBytes().Section(0x01000002, {}).Strings(0x03000000, {"A"}).str();
  for (std::size_t slot = 132; slot < 252; slot += 4) meta.replace(slot, 4, meta, 128, 4);
  EXPECT_EQ(Load(meta), 1u);
  EXPECT_EQ(g_tblProperty, (Names{{"A", 0x03000000}}));
}

TEST_F(MetaReadTest, ASlotThatLeadsOutOfTheFileIsRefused) {
  const std::string meta = MetaBytes().Strings(0x03000000, {"A"}).str();
  for (const std::uint32_t offset : {0xFFFFFFFFu, 0x7FFFFFFFu, 0x1000u, 286u}) {
    SCOPED_TRACE(offset);
    EXPECT_EQ(Load(Replaced(meta, 128, ByteString().Words({offset}).str())), 0u);
    EXPECT_EQ(gcGetLastError(), 13u);
  }
}

TEST_F(MetaReadTest, ManyWordsAndLongStringsComeBackWhole) {
  Words values(100000);
  for (std::uint32_t i = 0; i < values.size(); ++i) values[i] = i;
  const std::string name(200001, 'n');
  ASSERT_EQ(Load(MetaBytes()
                     .Section(0x01000002, {{1, values}})
                     .Strings(0x03000000, {name, "B"})
                     .Numbers(values)
                     .str()),
            1u);
  EXPECT_EQ(Hex(ValuesOf(0x01000002, 1)), Hex(values));
  EXPECT_EQ(g_tblProperty, (Names{{name, 0x03000000}, {"B", 0x03000001}}));
  EXPECT_EQ(g_tblDword.size(), values.size());
  EXPECT_EQ(g_tblDword.at(99999), 0x11000000u + 99999);
}

// The sections of the first file stay alive: releasing them would have been up to the host.
TEST_F(MetaReadTest, ASecondLoadTakesThePlaceOfTheFirst) {
  static GCSECTION forgotten;  // keeps them reachable
  ASSERT_EQ(Load(MetaBytes().Section(0x01000002, {}).Strings(0x03000000, {"A"}).str()), 1u);
  forgotten = gcGetSectByIndex(0x01000002, 0);
  ASSERT_EQ(Load(MetaBytes().Section(0x01000003, {}).Strings(0x03000000, {"B"}).str()), 1u);
  EXPECT_EQ(gcGetSectCount(0x01000002), 0u);
  EXPECT_EQ(gcGetSectCount(0x01000003), 1u);
  EXPECT_EQ(g_tblProperty, (Names{{"B", 0x03000000}}));
  EXPECT_EQ(gcGetEntryCount(forgotten), 0u);
}

#ifndef RUX_SANITIZED  // which needs more address space than that for itself
class MemoryTest : public MetaTest {
 protected:
  // Ends the process: 0 when the file is refused.
  void LoadWithLittleMemory(const std::string& file) {
    constexpr rlim_t kBytes = rlim_t{512} << 20;
    const rlimit limit{kBytes, kBytes};
    if (setrlimit(RLIMIT_AS, &limit) != 0) std::_Exit(2);
    std::_Exit(Load(file) == 0 && gcGetLastError() == 13 ? 0 : 1);
  }
};

// Files that announce far more than they have, read by a process that could not hold it.
TEST_F(MemoryTest, CountsAndLengthsBeyondTheFileTakeNoMemory) {
  const std::string header = MetaHeader({}).str();
  const std::vector<std::string> files = {
      header + ByteString().Words({0x20000000}).str(),                       // sections
      header + ByteString().Words({1, 0x01000002, 0x7FFFFFFF}).str(),        // entries
      header + ByteString().Words({1, 0x01000002, 1, 1, 0x7FFFFFFF}).str(),  // values
      MetaBytes().Block(0x03000000, 0xFFFFFFFF, "A").str(),
      MetaBytes().Block(0x11000000, 0xFFFFFFFC, "A").str(),
      MetaBytes().Block(0x1B000000, 0xFFFFFFFF, "A").str(),
  };
  for (const std::string& file : files) {
    SCOPED_TRACE(HexDump(file.substr(256)));
    EXPECT_EXIT(LoadWithLittleMemory(file), testing::ExitedWithCode(0), "");
  }
}
#endif

}  // namespace
