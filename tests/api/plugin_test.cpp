// The reader plug-in as the library finds, loads and calls it: missing, incomplete or odd ones, one
// inside the host, and the one at its fixed path.
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <stdexcept>

#include "tests/standins/host_process.h"
#include "tests/support/host.h"
#include "tests/support/script_test.h"

namespace {

namespace fs = std::filesystem;

constexpr char kLoadFailed[] = "Parse::load rsparsea(/usr/pelm/lib/libruxrsparser.so.0) failed.\n";

// A plug-in of tests/standins/plugin.cpp. Each holds, and hands over, this script:
//
//   3  [GLOBAL]      6  [FOO]     8  [PROPERTY]
//   4  G_A = x       7  C = z     9  2 =
//   5  B =
std::string StandIn(const std::string& name) { return RUX_STANDINS "/" + name + ".so"; }

constexpr char kFooUnknown[] = "Create section(2, FOO) object failed.\n";
constexpr char kTotalOfThree[] = "Parse::No more sections(total = 3).\n";

// A process that has a certain plug-in from the start

void PrintMessages() {
  for (const std::string& message : host::TakeMessages()) std::fputs(message.c_str(), stderr);
}

// Prints the messages of loading, the result of gccCompStart, and further messages.
[[noreturn]] void CompileAndExit() {
  PrintMessages();
  std::fprintf(stderr, "gccCompStart: %u\n", gccCompStart("folder\\script"));
  gccParse();
  PrintMessages();
  std::fprintf(stderr, "gccCheck: %u\n", gccCheck());
  PrintMessages();
  gccCompEnd();
  std::exit(0);
}

class LoadedPluginTest : public ::testing::Test {
 protected:
  // What CompileAndExit prints in a new process that gets the plug-in when the library is loaded.
  void ExpectRun(const std::string& plugin, const std::string& printed) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    ASSERT_EQ(setenv("RUX_TEST_PLUGIN", plugin.c_str(), 1), 0);
    EXPECT_EXIT(CompileAndExit(), ::testing::ExitedWithCode(0),
                ::testing::Eq<std::string>(printed));
  }
};

constexpr char kCompleteRun[] =
    "gccCompStart: 1\n"
    "Create section(2, FOO) object failed.\n"
    "Parse::No more sections(total = 3).\n"
    "gccCheck: 0\n"
    "Error[script:4]: [GLOBAL]:G_A, Value operator type(x) is invalid.\n"
    "Error[script:5]: [GLOBAL]:B, Entry name is invalid.\n"
    "Error[script:9]: [PROPERTY]:2, Entry name is invalid.\n";

TEST_F(LoadedPluginTest, MissingPluginIsToldOnceAndOpensNothing) {
  ExpectRun("", std::string(kLoadFailed) +
                    "gccCompStart: 0\n"
                    "Parse::No more sections(total = 0).\n"
                    "gccCheck: 1\n");
}

TEST_F(LoadedPluginTest, CompletePluginIsLoadedWithoutAMessage) {
  ExpectRun(StandIn("complete"), kCompleteRun);
}

TEST_F(LoadedPluginTest, WithoutRSOpenFileNothingOpens) {
  ExpectRun(StandIn("without_RSOpenFile"),
            "gccCompStart: 0\n"
            "Parse::No more sections(total = 0).\n"
            "gccCheck: 1\n");
}

TEST_F(LoadedPluginTest, WithoutRSEnumSectionThereAreNoSections) {
  ExpectRun(StandIn("without_RSEnumSection"),
            "gccCompStart: 1\n"
            "Parse::No more sections(total = 0).\n"
            "gccCheck: 1\n");
}

TEST_F(LoadedPluginTest, WithoutRSGetSectInfoNoSectionHasAName) {
  ExpectRun(StandIn("without_RSGetSectInfo"),
            "gccCompStart: 1\n"
            "Parse::Get section(NO. = 1,Index=0) name failed.\n"
            "Parse::Get section(NO. = 2,Index=1) name failed.\n"
            "Parse::Get section(NO. = 3,Index=2) name failed.\n"
            "Parse::No more sections(total = 3).\n"
            "gccCheck: 1\n");
}

TEST_F(LoadedPluginTest, WithoutRSEnumItemSectionsAreEmpty) {
  ExpectRun(StandIn("without_RSEnumItem"),
            "gccCompStart: 1\n"
            "Create section(2, FOO) object failed.\n"
            "Parse::No more sections(total = 3).\n"
            "gccCheck: 1\n");
}

TEST_F(LoadedPluginTest, WithoutRSParseRSCloseFileOrRSFindSEctionARunGoesOn) {
  for (const char* missing : {"RSParse", "RSCloseFile", "RSFindSEction"}) {
    SCOPED_TRACE(missing);
    ExpectRun(StandIn(std::string("without_") + missing), kCompleteRun);
  }
}

TEST_F(LoadedPluginTest, AskingForSizesMayAnswerZeroWhenItGivesThem) {
  ExpectRun(StandIn("sizes_answer_zero"), kCompleteRun);
}

TEST_F(LoadedPluginTest, SectionWhoseNameCannotBeReadCostsOnlyItself) {
  for (const char* plugin : {"fails_on_size", "fails_on_name"}) {
    SCOPED_TRACE(plugin);
    ExpectRun(StandIn(plugin),
              "gccCompStart: 1\n"
              "Parse::Get section(NO. = 2,Index=1) name failed.\n"
              "Parse::No more sections(total = 3).\n"
              "gccCheck: 0\n"
              "Error[script:4]: [GLOBAL]:G_A, Value operator type(x) is invalid.\n"
              "Error[script:5]: [GLOBAL]:B, Entry name is invalid.\n"
              "Error[script:9]: [PROPERTY]:2, Entry name is invalid.\n");
  }
}

// Prints what closing the script comes to, twice.
[[noreturn]] void ParseTwiceAndExit() {
  for (int run = 0; run < 2; ++run) {
    try {
      gccParse();
      std::fputs("parsed\n", stderr);
    } catch (const std::runtime_error& error) {
      std::fprintf(stderr, "gccParse raised: %s\n", error.what());
    }
    PrintMessages();
  }
  gccCompEnd();
  std::exit(0);
}

TEST_F(LoadedPluginTest, ErrorOfClosingIsThatOfTheParseAndTheScriptIsClosed) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  ASSERT_EQ(setenv("RUX_TEST_PLUGIN", StandIn("raises_on_close").c_str(), 1), 0);
  EXPECT_EXIT(
      {
        gccCompStart("folder\\script");
        ParseTwiceAndExit();
      },
      ::testing::ExitedWithCode(0),
      ::testing::Eq<std::string>("gccParse raised: cannot close\n"
                                 "Create section(2, FOO) object failed.\n"
                                 "Parse::No more sections(total = 3).\n"
                                 "parsed\n"
                                 "Parse::No more sections(total = 0).\n"));
}

// A process whose plug-in changes while it runs: the file of an INCLUDE is read by another plug-in
// than the script that names it.

class IncludingPluginTest : public ScriptTest {
 protected:
  // Messages of a script whose only INCLUDE is read by that plug-in.
  Lines ParseWithInclude(const std::string& plugin) {
    host::SetPlugin(plugin);
    return Parse("[INCLUDE]\nFILE = inner\n[FOO]\n");
  }
};

TEST_F(IncludingPluginTest, PluginThatWentMissingIsToldAndCostsTheInclude) {
  EXPECT_EQ(
      ParseWithInclude(""),
      (Lines{kLoadFailed, "Warning[board.rux:2], [INCLUDE]:FILE FILE inner cannot be loaded.\n",
             kFooUnknown, "Parse::No more sections(total = 2).\n"}));
}

TEST_F(IncludingPluginTest, PluginWithoutRSOpenFileCostsTheInclude) {
  EXPECT_EQ(ParseWithInclude(StandIn("without_RSOpenFile")),
            (Lines{"Warning[board.rux:2], [INCLUDE]:FILE FILE inner cannot be loaded.\n",
                   kFooUnknown, "Parse::No more sections(total = 2).\n"}));
}

TEST_F(IncludingPluginTest, EveryIncludeTakesThePluginThatIsThereThen) {
  EXPECT_EQ(
      ParseWithInclude(StandIn("complete")),
      (Lines{kFooUnknown, kTotalOfThree, kFooUnknown, "Parse::No more sections(total = 2).\n"}));
}

// Nobody but the error itself needs the plug-in any more.
TEST_F(IncludingPluginTest, ErrorOfClosingAnIncludedFileEndsTheParse) {
  try {
    ParseWithInclude(StandIn("raises_on_close"));
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "cannot close");
  }
  EXPECT_EQ(host::TakeMessages(), (Lines{kFooUnknown, kTotalOfThree}));
  host::SetPlugin(RUX_BUILT_PLUGIN);
  EXPECT_EQ(Parse("[FOO]\n"), (Lines{"Create section(1, FOO) object failed.\n",
                                     "Parse::No more sections(total = 1).\n"}));
}

TEST_F(IncludingPluginTest, IncludeReleasesItsPlugin) {
  ParseWithInclude(StandIn("complete"));
  EXPECT_EQ(dlopen(StandIn("complete").c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr);
}

TEST_F(IncludingPluginTest, CallsFollowTheProtocol) {
  void* plugin = dlopen(StandIn("complete").c_str(), RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(plugin, nullptr) << dlerror();
  ParseWithInclude(StandIn("complete"));
  Lines calls;
  reinterpret_cast<void (*)(Lines*)>(dlsym(plugin, "TakeCalls"))(&calls);
  // Sizes count the terminating zero: 7 for GLOBAL, 4 for FOO, 9 for PROPERTY.
  EXPECT_EQ(calls, (Lines{"RSOpenFile(" + ScriptPath("inner") + ")",
                          "RSParse(file)",
                          "RSEnumSection(file, 0, 0)",
                          "RSGetSectInfo(section 0, null, 0)",
                          "RSGetSectInfo(section 0, buffer, 7)",
                          "RSEnumItem(section 0, 0, null, 0, null, 0)",
                          "RSEnumItem(section 0, 0, buffer, 4, buffer, 2)",
                          "RSEnumItem(section 0, 1, null, 0, null, 0)",
                          "RSEnumItem(section 0, 1, buffer, 2, buffer, 1)",
                          "RSEnumItem(section 0, 2, null, 0, null, 0)",
                          "RSEnumSection(file, 1, 0)",
                          "RSGetSectInfo(section 1, null, 0)",
                          "RSGetSectInfo(section 1, buffer, 4)",
                          "RSEnumSection(file, 2, 0)",
                          "RSGetSectInfo(section 2, null, 0)",
                          "RSGetSectInfo(section 2, buffer, 9)",
                          "RSEnumItem(section 2, 0, null, 0, null, 0)",
                          "RSEnumItem(section 2, 0, buffer, 2, buffer, 1)",
                          "RSEnumItem(section 2, 1, null, 0, null, 0)",
                          "RSEnumSection(file, 3, 0)",
                          "RSCloseFile(address of file)"}));
  dlclose(plugin);
}

// Host programs that leave the loader alone

class HostProgramTest : public ScriptTest {
 protected:
  void SetUp() override {
    ScriptTest::SetUp();
    Write("board.rux", "[PROPERTY]\n3 = x\n");
  }

  std::string script() const { return ScriptPath("board.rux"); }
};

constexpr char kReadByThePlugin[] =
    "gccCompStart: 1\n"
    "Parse::No more sections(total = 1).\n"
    "Error[board.rux:2]: [PROPERTY]:3, Entry name is invalid.\n"
    "gccCheck: 0\n";

TEST_F(HostProgramTest, WithoutAnyReaderOpensNothing) {
  if (fs::exists(kFixedPath)) GTEST_SKIP() << "the plug-in is installed on this machine";
  EXPECT_EQ(RunHost("plain_host", script()), kLoadFailed + std::string("gccCompStart: 0\n"));
}

// Before its main, and before the constructors of its own objects.
TEST_F(HostProgramTest, MayWriteToAStandardStreamWhenItIsToldOfAMissingReader) {
  if (fs::exists(kFixedPath)) GTEST_SKIP() << "the plug-in is installed on this machine";
  for (const char* host : {"streaming_host", "carrying_streaming_host"}) {
    SCOPED_TRACE(host);
    EXPECT_EQ(RunHost(host, script()), kLoadFailed + std::string("0 sensors\n"));
  }
}

TEST_F(HostProgramTest, ThatExportsTheReadersFunctionsIsTheReader) {
  if (fs::exists(kFixedPath)) GTEST_SKIP() << "the plug-in is installed on this machine";
  EXPECT_EQ(RunHost("reader_host", script()), kLoadFailed + std::string(kReadByThePlugin));
}

TEST_F(HostProgramTest, FindsThePluginAtItsFixedPath) {
  const bool installed = fs::exists(kFixedPath);
  const std::string scratch = Path("scratch");
  fs::create_directory(scratch);
  const std::optional<std::string> printed =
      RunHost("plain_host", script(), [&] { return PutPluginAtItsFixedPath(scratch); });
  EXPECT_TRUE(fs::is_empty(scratch));
  EXPECT_EQ(fs::exists(kFixedPath), installed);
  if (!printed) GTEST_SKIP() << "this machine does not let the test mount anything";
  EXPECT_EQ(printed, kReadByThePlugin);
}

}  // namespace
