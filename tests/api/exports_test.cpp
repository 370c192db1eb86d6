// What the library's file exports and needs.
#include <dlfcn.h>
#include <elf.h>
#include <gtest/gtest.h>
#include <link.h>

#include <fstream>
#include <set>
#include <sstream>

#include "ruxcomp/compile.h"
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
    EXPECT_NE(dladdr(reinterpret_cast<void*>(&gccParse), &info), 0);
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
#ifdef RUX_SANITIZED
  standard.insert({"libasan.so.8", "libubsan.so.1", "libclang_rt.asan-x86_64.so"});
#endif
  for (const std::string& name : Library().needed) {
    EXPECT_TRUE(standard.count(name) || name.rfind("ld-linux", 0) == 0) << name;
  }
  EXPECT_EQ(Library().needed.count("libc.so.6"), 1u);
}

}  // namespace
