// Scripts that are read from memory.
#include "reader/texts.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

#include "reader/script_file.h"
#include "reader/value.h"
#include "tests/reader/temp_folder.h"

namespace {

using ruxcomp::reader::ScriptFile;
using ruxcomp::reader::Texts;

class TextsTest : public testing::Test {
 protected:
  ~TextsTest() override { Texts::Clear(); }

  // The name of the first section of the script; empty when it is refused.
  static std::string SectionOf(const std::string& path) {
    const auto file = ScriptFile::Open(path);
    if (file == nullptr || !file->Parse()) return {};
    return std::string(file->script()->sections().at(0).name);
  }
};

TEST_F(TextsTest, AreReadWhereThereIsNoFile) {
  Texts::Put("revision:board.rux", "[TEXT]\n");
  EXPECT_EQ(SectionOf("revision:board.rux"), "TEXT");
  EXPECT_EQ(SectionOf("revision:other.rux"), "");
}

TEST_F(TextsTest, AreReadInsteadOfAFile) {
  const TempFolder folder;
  const std::string path = folder.Write("a.rux", "[FILE]\n");
  Texts::Put(path, "[TEXT]\n");
  EXPECT_EQ(SectionOf(path), "TEXT");
  EXPECT_TRUE(Texts::Remove(path));
  EXPECT_EQ(SectionOf(path), "FILE");
  EXPECT_FALSE(Texts::Remove(path));
}

TEST_F(TextsTest, AreFoundUnderEveryPathOfTheirFile) {
  const TempFolder folder;
  const std::string path = folder.Write("a.rux", "[FILE]\n");
  const std::string link = folder.Write("other.rux", "");
  std::filesystem::remove(link);
  std::filesystem::create_symlink(path, link);
  std::filesystem::create_directory(folder / "parts");
  Texts::Put(path, "[TEXT]\n");
  EXPECT_EQ(SectionOf(folder / "parts/../a.rux"), "TEXT");
  EXPECT_EQ(SectionOf(folder / "parts\\..\\a.rux"), "TEXT");
  EXPECT_EQ(SectionOf(link), "TEXT");
  Texts::Remove(path);
  EXPECT_EQ(SectionOf(link), "FILE");
}

TEST_F(TextsTest, AreFoundUnderOtherPathsWithoutAFile) {
  const TempFolder folder;
  std::filesystem::create_directory(folder / "parts");
  Texts::Put(folder / "new.rux", "[TEXT]\n");
  EXPECT_EQ(SectionOf(folder / "parts/../new.rux"), "TEXT");
  EXPECT_EQ(SectionOf(folder / "parts/new.rux"), "");
}

TEST_F(TextsTest, AreLookedUpInsteadOfFiles) {
  const TempFolder folder;
  const std::string there = folder.Write("there.rux", "[FILE]\n");
  Texts::ReplaceFiles([](const std::string& path) -> std::optional<std::string> {
    if (path != "none/a.rux") return std::nullopt;
    return "[TEXT]\n";
  });
  EXPECT_EQ(SectionOf("none\\a.rux"), "TEXT");
  EXPECT_EQ(SectionOf("none/a.rux"), "TEXT");
  EXPECT_EQ(SectionOf(there), "");
  Texts::ReplaceFiles(nullptr);
  EXPECT_EQ(SectionOf(there), "FILE");
}

TEST_F(TextsTest, AreReplaced) {
  Texts::Put("a", "[ONE]\n");
  Texts::Put("a", "[TWO]\n");
  EXPECT_EQ(SectionOf("a"), "TWO");
}

TEST_F(TextsTest, AreFoundWithBackslashesAsSlashes) {
  Texts::Put("dir/a.rux", "[FOLDER]\n");
  EXPECT_EQ(SectionOf("dir\\a.rux"), "FOLDER");
  Texts::Put("dir\\a.rux", "[LITERAL]\n");
  EXPECT_EQ(SectionOf("dir\\a.rux"), "LITERAL");
  EXPECT_EQ(SectionOf("dir/a.rux"), "FOLDER");
}

TEST_F(TextsTest, AreRefusedWhileTheyInclude) {
  Texts::Put("dir/a.rux", "[A]\n");
  Texts::Put("dir/b.rux", "[A]\n");
  auto file = ScriptFile::Open("dir/a.rux");
  ASSERT_NE(file, nullptr);
  EXPECT_NE(ScriptFile::Open("dir\\a.rux"), nullptr);
  file->NoteRequest();
  EXPECT_EQ(ScriptFile::Open("dir\\a.rux"), nullptr);
  EXPECT_NE(ScriptFile::Open("dir/b.rux"), nullptr);
  Texts::Put("dir/a.rux", "[B]\n");  // as an editor does
  EXPECT_EQ(ScriptFile::Open("dir/a.rux"), nullptr);
  file.reset();
  EXPECT_NE(ScriptFile::Open("dir/a.rux"), nullptr);
}

// An open file and a text that hides it are two.
TEST_F(TextsTest, HaveAnIdentityOfTheirOwn) {
  const TempFolder folder;
  const std::string path = folder.Write("a.rux", "[FILE]\n");
  const auto file = ScriptFile::Open(path);
  Texts::Put(path, "[TEXT]\n");
  EXPECT_EQ(SectionOf(path), "TEXT");
}

TEST_F(TextsTest, HaveTheLimitOfFiles) {
  Texts::Put("a", std::string(101, '#'));
  EXPECT_EQ(ScriptFile::Open("a", 100), nullptr);
  EXPECT_NE(ScriptFile::Open("a", 101), nullptr);
}

}  // namespace
