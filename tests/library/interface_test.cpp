// The interface as programs use it: its headers, its records, loading and unloading.
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

// A missing MORVRUX entry is placed in the first file of the file table: each time the library's
// own, none is left from the time before.
TEST_F(InterfaceTest, LibraryCanBeLoadedAndUnloadedRepeatedly) {
  if (fs::exists("/usr/pelm/lib/libruxrsparser.so.0")) {
    GTEST_SKIP() << "the plug-in is installed on this machine";
  }
  Dl_info library;
  ASSERT_NE(dladdr(dlsym(RTLD_DEFAULT, "gccParse"), &library), 0);
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
