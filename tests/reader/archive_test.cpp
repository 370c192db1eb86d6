// What an archive keeps of a run, asked for as the library does it.
#include "reader/archive.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <stdexcept>

#include "reader/exports.h"
#include "reader/messages.h"
#include "reader/script_file.h"
#include "reader/texts.h"
#include "tests/reader/temp_folder.h"

namespace {

using ruxcomp::reader::Archive;
using ruxcomp::reader::ArchivedScript;
using ruxcomp::reader::Refusal;
using testing::ElementsAre;

// Reads the script and, where a value names a script, that one while the item is delivered.
void ReadAll(const std::string& folder, const std::string& name) {
  void* file = RSOpenFile(folder + "/" + name);
  if (file == nullptr) return;
  RSParse(file);
  for (std::uint32_t i = 0; void* section = RSEnumSection(file, i, 0); ++i) {
    std::vector<char> key(100);
    std::vector<char> value(100);
    std::uint32_t key_size = 100;
    std::uint32_t value_size = 100;
    for (std::uint32_t j = 0;
         RSEnumItem(section, j, key.data(), &key_size, value.data(), &value_size, nullptr) != 0;
         ++j) {
      if (std::string(key.data()) == "FILE") ReadAll(folder, value.data());
      key_size = value_size = 100;
    }
  }
  RSCloseFile(&file);
}

// "script.section.item", or "-".
std::string Shown(const ruxcomp::reader::Includer& includer) {
  if (!includer) return "-";
  return std::to_string(includer->script) + "." + std::to_string(includer->place.section) + "." +
         std::to_string(includer->place.item);
}

class ArchiveTest : public testing::Test {
 protected:
  ~ArchiveTest() override { ruxcomp::reader::Texts::Clear(); }

  // Each script as "name < includer".
  static std::vector<std::string> Opened(const Archive& archive) {
    std::vector<std::string> rows;
    for (const ArchivedScript& script : archive.scripts()) {
      rows.push_back(std::filesystem::path(script.path).filename().string() + " < " +
                     Shown(script.includer));
    }
    return rows;
  }

  TempFolder folder;
};

TEST_F(ArchiveTest, KeepsScriptsInOpeningOrder) {
  folder.Write("main", "[]\n[A]\nK=1\nFILE=one\nFILE=two\n[B]\n[C]\nFILE=three\n");
  folder.Write("one", "[A]\nK=1\n[A]\nFILE=two\nK=3\n");
  folder.Write("two", "[A]\nK=1\n");
  folder.Write("three", "[A]\nFILE=empty\nFILE=one\n");
  folder.Write("empty", "");
  const Archive archive;
  ReadAll(folder.path(), "main");
  EXPECT_THAT(Opened(archive),
              ElementsAre("main < -", "one < 0.1.1", "two < 1.1.0", "two < 0.1.2", "three < 0.3.0",
                          "empty < 4.0.0", "one < 4.0.1", "two < 6.1.0"));
  EXPECT_TRUE(archive.refused().empty());
  for (const ArchivedScript& script : archive.scripts()) ASSERT_NE(script.script, nullptr);
  EXPECT_EQ(archive.scripts()[0].script->sections().size(), 4u);
}

TEST_F(ArchiveTest, SharesAScriptThatIsOpenedAgain) {
  folder.Write("main", "[A]\nFILE=a\nFILE=a\nFILE=same\n");
  folder.Write("a", "x\n[A]\n");
  folder.Write("same", "x\n[A]\n");
  const Archive archive;
  ReadAll(folder.path(), "main");
  ASSERT_EQ(archive.scripts().size(), 4u);
  EXPECT_EQ(archive.scripts()[1].script, archive.scripts()[2].script);
  EXPECT_NE(archive.scripts()[1].script, archive.scripts()[3].script);
  for (std::size_t i = 1; i < 4; ++i) {
    ASSERT_EQ(archive.scripts()[i].problems.size(), 1u);
    EXPECT_EQ(archive.scripts()[i].problems[0].range, (ruxcomp::reader::Range{0, 1}));
  }
}

TEST_F(ArchiveTest, DoesNotShareWhatWasChanged) {
  folder.Write("a", "[A]\n");
  const Archive archive;
  ReadAll(folder.path(), "a");
  folder.Write("a", "[B]\n");
  ReadAll(folder.path(), "a");
  ASSERT_EQ(archive.scripts().size(), 2u);
  EXPECT_EQ(archive.scripts()[0].script->sections()[0].name, "A");
  EXPECT_EQ(archive.scripts()[1].script->sections()[0].name, "B");
}

TEST_F(ArchiveTest, KeepsProblems) {
  folder.Write("a", "[A]\nK = \"v\n= 5\n");
  const Archive archive;
  ReadAll(folder.path(), "a");
  const std::vector<ruxcomp::reader::Problem>& problems = archive.scripts()[0].problems;
  ASSERT_EQ(problems.size(), 2u);
  EXPECT_EQ(problems[0].message, ruxcomp::reader::MessageId::kUnclosedQuote);
  EXPECT_EQ(problems[0].line, 2u);
  EXPECT_EQ(problems[0].range, (ruxcomp::reader::Range{8, 10}));
  EXPECT_EQ(problems[1].message, ruxcomp::reader::MessageId::kMissingKey);
  EXPECT_EQ(problems[1].line, 3u);
  EXPECT_EQ(problems[1].range, (ruxcomp::reader::Range{11, 14}));
}

TEST_F(ArchiveTest, KeepsTheOpenedPath) {
  std::filesystem::create_directory(folder / "dir");
  folder.Write("dir/a", "[A]\n");
  ruxcomp::reader::Texts::Put("text/b", "[B]\n");
  const Archive archive;
  ReadAll(folder.path(), "dir\\a");
  void* text = RSOpenFile("text\\b");
  RSCloseFile(&text);
  EXPECT_EQ(archive.scripts()[0].path, folder / "dir\\a");
  EXPECT_EQ(archive.scripts()[1].path, "text\\b");
  EXPECT_EQ(archive.scripts()[1].opened, "text/b");
  EXPECT_EQ(archive.scripts()[1].script, nullptr) << "it was never parsed";
}

TEST_F(ArchiveTest, KeepsWhatWasRefused) {
  folder.Write("main", "[A]\nK=1\nFILE=missing\nFILE=main\nFILE=.\nFILE=main/a\nFILE=loop\n");
  std::filesystem::create_symlink("loop", folder / "loop");
  const Archive archive;
  ReadAll(folder.path(), "main");
  const auto& refused = archive.refused();
  ASSERT_EQ(refused.size(), 5u);
  const Refusal reasons[] = {Refusal::kNotFound, Refusal::kIsOpenAlready, Refusal::kIsFolder,
                             Refusal::kNotFound, Refusal::kCannotBeRead};
  const int errors[] = {ENOENT, 0, EISDIR, ENOTDIR, ELOOP};
  for (std::size_t i = 0; i < refused.size(); ++i) {
    EXPECT_EQ(refused[i].reason, reasons[i]) << i;
    EXPECT_EQ(refused[i].error, errors[i]) << i;
    EXPECT_EQ(Shown(refused[i].includer), "0.0." + std::to_string(i + 1));
    EXPECT_EQ(refused[i].opened_before, 1u);
  }
  EXPECT_EQ(refused[0].path, folder / "missing");
}

TEST_F(ArchiveTest, KeepsWhatIsTooLargeOrTooMuch) {
  const std::string path = folder.Write("a", "[A]\n");
  const Archive archive;
  EXPECT_EQ(ruxcomp::reader::ScriptFile::Open(path, 3), nullptr);
  std::vector<std::unique_ptr<ruxcomp::reader::ScriptFile>> open;
  for (std::size_t i = 0; i <= ruxcomp::reader::kMostOpen; ++i) {
    const std::string name = "text" + std::to_string(i);
    ruxcomp::reader::Texts::Put(name, "[A]\n");
    open.push_back(ruxcomp::reader::ScriptFile::Open(name));
    if (open.back() != nullptr) open.back()->NoteRequest();
  }
  EXPECT_EQ(archive.scripts().size(), ruxcomp::reader::kMostOpen);
  ASSERT_EQ(archive.refused().size(), 2u);
  EXPECT_EQ(archive.refused()[0].reason, Refusal::kTooLarge);
  EXPECT_EQ(archive.refused()[1].reason, Refusal::kTooMany);
  EXPECT_EQ(archive.refused()[1].opened_before, ruxcomp::reader::kMostOpen);
}

// Files that are closed in another order than includes are.
TEST_F(ArchiveTest, ForgetsItemsOfClosedFiles) {
  void* outer = RSOpenFile(folder.Write("outer", "[A]\nK=1\n"));
  RSParse(outer);
  const Archive archive;  // the outer one is not in it
  void* middle = RSOpenFile(folder.Write("middle", "[A]\nK=1\n"));
  RSParse(middle);
  std::uint32_t size = 0;
  RSEnumItem(RSEnumSection(middle, 0, 0), 0, nullptr, &size, nullptr, &size, nullptr);
  void* inner = RSOpenFile(folder.Write("inner", "[A]\nK=1\n"));
  RSParse(inner);
  RSEnumItem(RSEnumSection(inner, 0, 0), 0, nullptr, &size, nullptr, &size, nullptr);
  RSCloseFile(&middle);
  RSCloseFile(&inner);
  void* last = RSOpenFile(folder.Write("last", ""));
  EXPECT_THAT(Opened(archive), ElementsAre("middle < -", "inner < 0.0.0", "last < -"));
  RSCloseFile(&last);
  RSCloseFile(&outer);
}

TEST_F(ArchiveTest, KeepsNothingOfFilesThatAreOpenBefore) {
  void* file = RSOpenFile(folder.Write("a", "x\n"));
  auto former = std::make_unique<Archive>();
  void* archived = RSOpenFile(folder.Write("b", "x\n"));
  former.reset();
  const Archive archive;
  RSParse(file);
  RSParse(archived);
  EXPECT_TRUE(archive.scripts().empty());
  RSCloseFile(&archived);
  RSCloseFile(&file);
}

TEST_F(ArchiveTest, IsTheOnlyOne) {
  const Archive archive;
  EXPECT_THROW(Archive(), std::logic_error);
  ReadAll(folder.path(), "missing");
  EXPECT_EQ(archive.refused().size(), 1u);
}

}  // namespace
