// The interface as programs use it: its headers, its records, its data, loading and unloading.
#include <dlfcn.h>

#include <cstddef>
#include <cstdio>
#include <filesystem>

#include "tests/support/host.h"
#include "tests/support/script_test.h"

namespace {

namespace fs = std::filesystem;

struct Finished {
  int status;
  std::string output;
};

Finished Shell(const std::string& command) {
  std::FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  if (!pipe) return {-1, "cannot start " + command};
  std::string output;
  char buffer[512];
  while (const std::size_t size = std::fread(buffer, 1, sizeof buffer, pipe)) {
    output.append(buffer, size);
  }
  return {pclose(pipe), output};
}

std::vector<fs::path> PublicHeaders() {
  std::vector<fs::path> headers;
  for (const auto& file : fs::directory_iterator(RUX_INCLUDE "/ruxcomp")) {
    if (file.path().extension() == ".h") headers.push_back(file.path());
  }
  return headers;
}

struct KeywordRow {
  std::string keyword;
  std::uint32_t identifier;
};

void ExpectRows(const tagNTMAP* rows, std::uint32_t count,
                const std::vector<KeywordRow>& expected) {
  ASSERT_EQ(count, expected.size());
  for (std::uint32_t i = 0; i < count; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(rows[i].keyword, expected[i].keyword);
    EXPECT_EQ(rows[i].identifier, expected[i].identifier);
  }
}

using InterfaceTest = ScriptTest;

TEST_F(InterfaceTest, EveryPublicHeaderCompilesOnItsOwn) {
  EXPECT_GE(PublicHeaders().size(), 8u);
  for (const fs::path& header : PublicHeaders()) {
    const std::string include = "#include \"ruxcomp/" + header.filename().string() + "\"\n";
    Write("alone.cpp", include + include);
    const Finished compiler = Shell(
        RUX_CXX " -std=c++17 -Wall -Wextra -Wpedantic -Werror -fsyntax-only -I " RUX_INCLUDE " " +
        Path("alone.cpp"));
    EXPECT_EQ(compiler.status, 0) << header << "\n" << compiler.output;
  }
}

TEST_F(InterfaceTest, TableDataIsTwoWordsAndAUnion) {
  EXPECT_EQ(sizeof(tagTBLDATA), 16u);
  EXPECT_EQ(offsetof(tagTBLDATA, kind), 0u);
  EXPECT_EQ(offsetof(tagTBLDATA, index), 4u);
  EXPECT_EQ(offsetof(tagTBLDATA, data), 8u);
  EXPECT_EQ(sizeof(tagTBLDATA::data), 8u);
}

TEST_F(InterfaceTest, FileInfoIsTwoWords) {
  EXPECT_EQ(sizeof(tagMETAFILEINFO), 8u);
  EXPECT_EQ(offsetof(tagMETAFILEINFO, version), 0u);
  EXPECT_EQ(offsetof(tagMETAFILEINFO, creationTime), 4u);
}

TEST_F(InterfaceTest, SectionKeywords) {
  EXPECT_EQ(g_dwNTMSect, 14u);
  ExpectRows(g_NTMapSect, g_dwNTMSect,
             {{"MORVRUX", 0x20000001},
              {"PROPERTY", 0x20000002},
              {"SYSTEM", 0x20000003},
              {"GROUP", 0x20000004},
              {"SENSOR", 0x20000005},
              {"DEVICE", 0x20000006},
              {"ACTION", 0x20000007},
              {"TABLE", 0x20000008},
              {"PELMGROUP", 0x20000009},
              {"GLOBAL", 0x2000000A},
              {"REPEATER", 0x2000000B},
              {"DEFINE", 0x2000000C},
              {"IFDEF", 0x2000000D},
              {"INCLUDE", 0x2000000E}});
}

TEST_F(InterfaceTest, EntryKeywords) {
  EXPECT_EQ(g_dwNTMEntry, 37u);
  ExpectRows(g_NTMapEntry, g_dwNTMEntry,
             {{"VERSION", 0x10020001},
              {"TYPE", 0x10028002},
              {"FLAG", 0x10028003},
              {"SOUTHBRIDGE", 0x10028004},
              {"NORTHBRIDGE", 0x10028005},
              {"RUXLOOP", 0x10028006},
              {"CHILDGROUP", 0x10028007},
              {"ID", 0x10028008},
              {"INITFLAG", 0x10028009},
              {"CONTROLMASK", 0x1002800A},
              {"THEORY", 0x1002800B},
              {"THRESHOLD_FH", 0x1002800C},
              {"THRESHOLD_WH", 0x1002800D},
              {"THRESHOLD_FL", 0x1002800E},
              {"THRESHOLD_WL", 0x1002800F},
              {"ARGNUMBER", 0x10028010},
              {"PID", 0x10028011},
              {"", 0x10020012},
              {"", 0x10010001},
              {"MODEL", 0x10020013},
              {"PARENT", 0x10020014},
              {"NAME", 0x10020015},
              {"DEFINEWORD", 0x10020016},
              {"", 0x10020017},
              {"P_", 0x10020018},
              {"FILE", 0x10020019},
              {"VALUE", 0x10080000},
              {"G_", 0x10080001},
              {"VALUE_INIT", 0x10080002},
              {"VALUE_DEINIT", 0x10080003},
              {"VALUE_ENTRY", 0x10080004},
              {"VALUE_EXIT", 0x10080005},
              {"VALUE_IPMI", 0x10080006},
              {"VALUE_", 0x10080007},
              {"VALUE_", 0x10080008},
              {"SENSORS", 0x10048001},
              {"", 0x10100001}});
}

TEST_F(InterfaceTest, VersionsAndDataOffset) {
  EXPECT_EQ(RUX_VERSION, 0x01000000u);
  EXPECT_EQ(RUXD_VERSION, 0x01000000u);
  EXPECT_EQ(RUXD_DATA_OFFSET, 0x80u);
}

TEST_F(InterfaceTest, CountersStartAtTheirClasses) {
  EXPECT_EQ(g_idxProperty, 0x03000000u);
  EXPECT_EQ(g_idxGlobal, 0x04000000u);
  EXPECT_EQ(g_idxValue, 0x05000000u);
  EXPECT_EQ(g_idxRepeater, 0x06000000u);
  EXPECT_EQ(g_idxDword, 0x11000000u);
  EXPECT_EQ(g_idxString, 0x12000000u);
  EXPECT_EQ(g_idxGroup, 0x18000000u);
  EXPECT_EQ(g_idxAction, 0x1A000000u);
  EXPECT_EQ(g_idxTableName, 0x1C000000u);
}

TEST_F(InterfaceTest, SymbolTablesStartEmpty) {
  EXPECT_TRUE(g_tblProperty.empty());
  EXPECT_TRUE(g_tblGlobal.empty());
  EXPECT_TRUE(g_tblValue.empty());
  EXPECT_TRUE(g_tblRepeater.empty());
  EXPECT_TRUE(g_tblDword.empty());
  EXPECT_TRUE(g_tblString.empty());
  EXPECT_TRUE(g_tblGroup.empty());
  EXPECT_TRUE(g_tblAction.empty());
  EXPECT_TRUE(g_tblTableName.empty());
  EXPECT_TRUE(g_tblTableData.empty());
}

TEST_F(InterfaceTest, LastErrorsStartAtZero) {
  EXPECT_EQ(g_dwLastError, 0u);
  EXPECT_EQ(g_dwLastErrorD, 0u);
}

TEST_F(InterfaceTest, LastErrorFunctionsWorkOnTheExportedWords) {
  gcSetLastError(7);
  gdSetLastError(9);
  EXPECT_EQ(g_dwLastError, 7u);
  EXPECT_EQ(g_dwLastErrorD, 9u);
  EXPECT_EQ(gcGetLastError(), 7u);
  EXPECT_EQ(gdGetLastError(), 9u);
}

TEST_F(InterfaceTest, LastErrorWordsThatTheHostSetsAreSeenByTheLibrary) {
  g_dwLastError = 3;
  g_dwLastErrorD = 4;
  EXPECT_EQ(gcGetLastError(), 3u);
  EXPECT_EQ(gdGetLastError(), 4u);
}

// A missing MORVRUX entry is placed in the first file of the file table: each time the library's
// own, none is left from the time before.
TEST_F(InterfaceTest, LibraryCanBeLoadedAndUnloadedRepeatedly) {
  if (fs::exists("/usr/pelm/lib/libruxrsparser.so.0")) {
    GTEST_SKIP() << "the plug-in is installed on this machine";
  }
  Dl_info library;
  ASSERT_NE(dladdr(reinterpret_cast<void*>(&gccParse), &library), 0);
  std::string command = std::string(RUX_STANDINS "/loading_host ") + library.dli_fname;
  std::string expected;
  for (const std::string name : {"first", "second", "third"}) {
    Write(name, "[MORVRUX]\n");
    command += " '" + ScriptPath(name) + "'";
    expected +=
        "Parse::load rsparsea(/usr/pelm/lib/libruxrsparser.so.0) failed.\n"
        "loaded\n"
        "Parse::No more sections(total = 1).\n"
        "Error[" +
        name +
        ":0]: [MORVRUX]:VERSION, This ENTRY does not exist.\n"
        "unloaded\n";
  }
  const Finished host = Shell(command);
  EXPECT_EQ(host.status, 0);
  EXPECT_EQ(host.output, expected);
}

}  // namespace
