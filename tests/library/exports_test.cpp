// What the library's file exports and needs, and the values of the exported data.
#include <dlfcn.h>
#include <elf.h>
#include <gtest/gtest.h>
#include <link.h>

#include <fstream>
#include <set>
#include <sstream>

#include "ruxcomp/ruxcomp.h"
#include "tests/support/host.h"

namespace {

using Names = std::set<std::string>;

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

// The dynamic tables of an ELF file of this machine's own kind.
class ElfFile {
 public:
  explicit ElfFile(const std::string& path) : bytes_(ReadFile(path)) {
    const auto& header = At<ElfW(Ehdr)>(0);
    for (unsigned i = 0; i < header.e_shnum; ++i) {
      const auto& section = At<ElfW(Shdr)>(header.e_shoff + i * sizeof(ElfW(Shdr)));
      const auto& names = At<ElfW(Shdr)>(header.e_shoff + section.sh_link * sizeof(ElfW(Shdr)));
      if (section.sh_type == SHT_DYNSYM) ReadSymbols(section, names.sh_offset);
      if (section.sh_type == SHT_DYNAMIC) ReadDynamic(section, names.sh_offset);
    }
  }

  Names functions, data, undefined, needed;
  std::string soname;

 private:
  template <class Record>
  const Record& At(std::size_t offset) const {
    return *reinterpret_cast<const Record*>(bytes_.data() + offset);
  }

  void ReadSymbols(const ElfW(Shdr) & section, std::size_t names) {
    for (std::size_t at = 0; at < section.sh_size; at += sizeof(ElfW(Sym))) {
      const auto& symbol = At<ElfW(Sym)>(section.sh_offset + at);
      const std::string name = bytes_.data() + names + symbol.st_name;
      const unsigned type = ELF64_ST_TYPE(symbol.st_info);
      if (name.empty()) continue;
      (symbol.st_shndx == SHN_UNDEF ? undefined : type == STT_FUNC ? functions : data).insert(name);
    }
  }

  void ReadDynamic(const ElfW(Shdr) & section, std::size_t names) {
    for (std::size_t at = 0; at < section.sh_size; at += sizeof(ElfW(Dyn))) {
      const auto& row = At<ElfW(Dyn)>(section.sh_offset + at);
      const char* text = bytes_.data() + names + row.d_un.d_val;
      if (row.d_tag == DT_NEEDED) needed.insert(text);
      if (row.d_tag == DT_SONAME) soname = text;
    }
  }

  std::string bytes_;
};

// The file of the library that this test runs with.
const ElfFile& Library() {
  static const ElfFile file([] {
    Dl_info info;
    EXPECT_NE(dladdr(dlsym(RTLD_DEFAULT, "gccParse"), &info), 0);
    return std::string(info.dli_fname);
  }());
  return file;
}

const Names kFunctions = {"gccCompStart",
                          "gccParse",
                          "gccCheck",
                          "gccOutput",
                          "gccOutputD",
                          "gccCompEnd",

                          "gcInit",
                          "gcUnInit",
                          "gcGetSectCount",
                          "gcGetSectByIndex",
                          "gcGetSectByID",
                          "gcGetSectByName",
                          "gcGetGroupIndex",
                          "gcGetEntryCount",
                          "gcGetEntryByType",
                          "gcGetEntryByIndex",
                          "gcGetEntryByName",
                          "gcGetValueCount",
                          "gcGetValueByIndex",
                          "gcGetValueByID",
                          "gcGetTableData",
                          "gcGetLastError",
                          "_Z14gcSetLastErrorj",

                          "gdInit",
                          "gdUnInit",
                          "gdGetSectByIndex",
                          "gdGetSectName",
                          "gdGetSectPName",
                          "gdGetSectID",
                          "gdGetEntryByIndex",
                          "gdGetEntryName",
                          "gdGetValue",
                          "gdGetLastError",
                          "_Z14gdSetLastErrorj"};

const Names kData = {
    "g_NTMapSect",   "g_dwNTMSect",  "g_NTMapEntry",     "g_dwNTMEntry",

    "g_tblProperty", "g_tblGlobal",  "g_tblValue",       "g_tblRepeater",  "g_tblDword",
    "g_tblString",   "g_tblGroup",   "g_tblAction",      "g_tblTableName", "g_tblTableData",

    "g_idxProperty", "g_idxGlobal",  "g_idxValue",       "g_idxRepeater",  "g_idxDword",
    "g_idxString",   "g_idxGroup",   "g_idxAction",      "g_idxTableName",

    "RUX_VERSION",   "RUXD_VERSION", "RUXD_DATA_OFFSET", "g_dwLastError",  "g_dwLastErrorD"};

TEST(ExportsTest, FunctionsAreTheListAndNothingElse) { EXPECT_EQ(Library().functions, kFunctions); }

TEST(ExportsTest, DataIsTheListAndNothingElse) { EXPECT_EQ(Library().data, kData); }

// Rows of the map end in a semicolon; so do its "*" and its last bracket.
TEST(ExportsTest, ExportMapNamesTheListAndNothingElse) {
  std::istringstream map(ReadFile(RUX_EXPORT_MAP));
  Names names;
  for (std::string word; map >> word;) {
    if (word.back() == ';' && word != "*;" && word != "};")
      names.insert(word.erase(word.size() - 1));
  }
  Names expected = kFunctions;
  expected.insert(kData.begin(), kData.end());
  EXPECT_EQ(names, expected);
}

TEST(ExportsTest, LoadingTakesThePluginOnceAndSaysNothing) {
  EXPECT_EQ(host::PluginLoads(), 1);
  EXPECT_EQ(host::TakeMessages(), std::vector<std::string>{});
}

TEST(ExportsTest, OutputIsLeftToTheHost) { EXPECT_EQ(Library().undefined.count("Output"), 1u); }

TEST(ExportsTest, FileTellsItsSoname) { EXPECT_EQ(Library().soname, "libruxcomp.so.0"); }

TEST(ExportsTest, NothingButTheStandardLibrariesIsNeeded) {
  Names standard = {"libstdc++.so.6", "libm.so.6", "libgcc_s.so.1", "libc.so.6", "libdl.so.2"};
#if defined(__SANITIZE_ADDRESS__)
  standard.insert({"libasan.so.8", "libubsan.so.1"});
#endif
  for (const std::string& name : Library().needed) {
    EXPECT_TRUE(standard.count(name) || name.rfind("ld-linux", 0) == 0) << name;
  }
  EXPECT_EQ(Library().needed.count("libc.so.6"), 1u);
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

TEST(ExportsTest, SectionKeywords) {
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

TEST(ExportsTest, EntryKeywords) {
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

TEST(ExportsTest, VersionsAndDataOffset) {
  EXPECT_EQ(RUX_VERSION, 0x01000000u);
  EXPECT_EQ(RUXD_VERSION, 0x01000000u);
  EXPECT_EQ(RUXD_DATA_OFFSET, 0x80u);
}

TEST(ExportsTest, CountersStartAtTheirClasses) {
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

TEST(ExportsTest, SymbolTablesStartEmpty) {
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

TEST(ExportsTest, LastErrorsStartAtZero) {
  EXPECT_EQ(g_dwLastError, 0u);
  EXPECT_EQ(g_dwLastErrorD, 0u);
}

TEST(ExportsTest, LastErrorFunctionsWorkOnTheExportedWords) {
  gcSetLastError(7);
  gdSetLastError(9);
  EXPECT_EQ(g_dwLastError, 7u);
  EXPECT_EQ(g_dwLastErrorD, 9u);
  EXPECT_EQ(gcGetLastError(), 7u);
  EXPECT_EQ(gdGetLastError(), 9u);
}

TEST(ExportsTest, LastErrorWordsThatTheHostSetsAreSeenByTheLibrary) {
  g_dwLastError = 3;
  g_dwLastErrorD = 4;
  EXPECT_EQ(gcGetLastError(), 3u);
  EXPECT_EQ(gdGetLastError(), 4u);
}

}  // namespace
