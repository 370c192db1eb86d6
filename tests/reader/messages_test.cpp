// What the plug-in reports to the host's Output.
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <unistd.h>

#include <filesystem>

#include "tests/reader/plugin_host.h"

namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class MessagesTest : public PluginTest {
 protected:
  // Opens, parses and closes a script of that name and text.
  void Read(const std::string& name, const std::string& text) {
    void* file = Load(folder.Write(name, text));
    ASSERT_NE(file, nullptr);
    close_file(&file);
  }
};

TEST_F(MessagesTest, NothingIsSaidOfAGoodScript) {
  Read("good.rux", "# good\n[A]\nK = \"a # b\", c ; d\n");
  EXPECT_THAT(Messages(), IsEmpty());
}

// The path has no backslash: all of it is the base name.
TEST_F(MessagesTest, EveryProblemIsToldWithFileAndLine) {
  Read("bad.rux",
       "K = 1\n"
       "[A\n"
       "[B] x\n"
       "= 2\n"
       "K = \"x\n"
       "K\0 = 3\n"s);
  const std::string place = "Error[" + folder / "bad.rux:";
  EXPECT_THAT(Messages(), ElementsAre(place + "1]: Text before the first section is ignored.\n",
                                      place + "2]: Section header is not closed.\n",
                                      place + "3]: Text after the section header is ignored.\n",
                                      place + "4]: Entry has no key.\n",
                                      place + "5]: Double quote is not closed.\n",
                                      place + "6]: NUL bytes are ignored.\n"));
}

TEST_F(MessagesTest, TheFileIsNamedByWhatFollowsTheLastBackslash) {
  folder.Write("board.rux", "[A\n");
  void* file = Load(Backslashed("board.rux"));
  ASSERT_NE(file, nullptr);
  EXPECT_THAT(Messages(), ElementsAre("Error[board.rux:1]: Section header is not closed.\n"));
  close_file(&file);
}

TEST_F(MessagesTest, ProblemsAreToldByTheFirstParseOnly) {
  void* file = open_file(folder.Write("bad.rux", "[A\n"));
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_EQ(parse(file), 1u);
  EXPECT_EQ(Messages().size(), 1u);
  EXPECT_EQ(parse(file), 1u);
  EXPECT_EQ(Messages().size(), 1u);
  EXPECT_EQ(ReadAll(file).size(), 1u);
  close_file(&file);
}

TEST_F(MessagesTest, TwoFilesAreNotMixedUp) {
  folder.Write("outer.rux", "[A\n");
  folder.Write("inner.rux", "\n[A] x\n");
  void* outer = Load(Backslashed("outer.rux"));
  void* inner = Load(Backslashed("inner.rux"));
  EXPECT_THAT(Messages(),
              ElementsAre("Error[outer.rux:1]: Section header is not closed.\n",
                          "Error[inner.rux:2]: Text after the section header is ignored.\n"));
  close_file(&inner);
  close_file(&outer);
}

// One byte above 1 GiB; the file has no blocks on the disk.
TEST_F(MessagesTest, ATooLargeScriptIsRefused) {
  folder.Write("large.rux", "");
  std::filesystem::resize_file(folder / "large.rux", 1073741825);
  EXPECT_EQ(open_file(Backslashed("large.rux")), nullptr);
  EXPECT_THAT(Messages(), ElementsAre("Error[large.rux:1]: Script is too large.\n"));
}

// One file is being read; 65,535 more may be opened until it is closed.
TEST_F(MessagesTest, ScriptsThatIncludeMoreThanAnyNeedsAreCutOff) {
  folder.Write("outer.rux", "");
  folder.Write("inner.rux", "");
  void* outer = open_file(Backslashed("outer.rux"));
  enum_section(outer, 0, 0);
  for (int i = 0; i < 65535; ++i) {
    void* inner = open_file(Backslashed("inner.rux"));
    ASSERT_NE(inner, nullptr) << i;
    close_file(&inner);
  }
  EXPECT_EQ(open_file(Backslashed("inner.rux")), nullptr);
  EXPECT_THAT(Messages(),
              ElementsAre("Error[inner.rux:1]: Too many scripts include one another.\n"));
  close_file(&outer);
  void* inner = open_file(Backslashed("inner.rux"));
  EXPECT_NE(inner, nullptr);
  close_file(&inner);
}

// In a process of its own that may use half a gibibyte.
class LittleMemoryTest : public MessagesTest {
 protected:
  void SetUp() override {
#ifdef RUX_SANITIZED
    GTEST_SKIP() << "AddressSanitizer reserves more memory than may be allowed here";
#endif
  }

  // Opens and parses the file; both fail or only the second, with that one message.
  void ExpectGivenUp(const std::string& name, bool opens, const std::string& message) {
    const auto given_up = [&] {
      const rlimit half{536870912, 536870912};
      setrlimit(RLIMIT_AS, &half);
      void* file = open_file(Backslashed(name));
      return (file != nullptr) == opens && parse(file) == 0 &&
             enum_section(file, 0, 0) == nullptr && Messages() == std::vector{message};
    };
    EXPECT_EXIT(_exit(given_up() ? 0 : 1), testing::ExitedWithCode(0), "");
  }
};

TEST_F(LittleMemoryTest, ATextThatDoesNotFitIsRefused) {
  folder.Write("large.rux", "");
  std::filesystem::resize_file(folder / "large.rux", 1073741824);
  ExpectGivenUp("large.rux", false, "Error[large.rux:1]: Script does not fit into memory.\n");
}

// No memory is asked for.
TEST_F(LittleMemoryTest, AFileThatSaysThatItIsTooLargeIsNotRead) {
  folder.Write("large.rux", "");
  std::filesystem::resize_file(folder / "large.rux", 1073741825);
  ExpectGivenUp("large.rux", false, "Error[large.rux:1]: Script is too large.\n");
}

// 32 million lines of two bytes: the text fits, its items do not.
TEST_F(LittleMemoryTest, ItemsThatDoNotFitAreNotHandedOut) {
  std::string text = "[A]\n";
  for (int i = 0; i < 32000000; ++i) text += "K\n";
  folder.Write("lines.rux", text);
  ExpectGivenUp("lines.rux", true, "Error[lines.rux:1]: Script does not fit into memory.\n");
}

TEST_F(MessagesTest, AHostWithoutOutputIsServedInSilence) {
  const std::string script = folder.Write("bad.rux", "K = 1\n[A\n[B] x\n= 2\n");
  const auto [output, status] =
      Shell(std::string(RUX_SILENT_HOST) + " " + RUX_READER_PLUGIN + " " + script);
  EXPECT_EQ(output, "2\n");
  EXPECT_EQ(status, 0);
}

}  // namespace
