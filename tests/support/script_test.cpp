#include "tests/support/script_test.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/support/host.h"

namespace fs = std::filesystem;

void ScriptTest::SetUp() {
  std::string name = (fs::temp_directory_path() / "rux-test-XXXXXX").string();
  ASSERT_NE(mkdtemp(name.data()), nullptr);
  folder_ = name;
  host::TakeMessages();
}

void ScriptTest::TearDown() {
  gccCompEnd();
  fs::remove_all(folder_);
}

std::string ScriptTest::Path(const std::string& name) const { return folder_ + "/" + name; }

std::string ScriptTest::ScriptPath(const std::string& name) const { return folder_ + "\\" + name; }

void ScriptTest::Write(const std::string& name, const std::string& content) {
  fs::create_directories(fs::path(Path(name)).parent_path());
  std::ofstream file(Path(name), std::ios::binary);
  file << content;
  ASSERT_TRUE(file.flush());
}

std::string ScriptTest::ReadAll(const std::string& name) const {
  std::ifstream file(Path(name), std::ios::binary);
  EXPECT_TRUE(file) << name;
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

Lines ScriptTest::Parse(const std::string& text) {
  Write("board.rux", text);
  EXPECT_NE(gccCompStart(ScriptPath("board.rux")), 0u);
  gccParse();
  return host::TakeMessages();
}

Lines ScriptTest::Check(const std::string& text, std::uint32_t valid) {
  Parse(text);
  EXPECT_EQ(gccCheck(), valid);
  return host::TakeMessages();
}

std::string ScriptTest::Compile(const std::string& text) {
  EXPECT_EQ(Check(text, 1), Lines{});
  EXPECT_EQ(gccOutput(Path("board.meta")), 1u);
  std::string meta = ReadAll("board.meta");
  EXPECT_GE(meta.size(), 24u);
  return meta.replace(20, 4, 4, '\0');
}
