#include "tests/support/script_test.h"

#include <filesystem>
#include <fstream>
#include <map>

#include "compiled/verify.h"
#include "tests/support/host.h"

namespace fs = std::filesystem;

void ScriptTest::SetUp() { host::TakeMessages(); }

void ScriptTest::TearDown() {
  gccCompEnd();
  EmptyFolder();
}

void ScriptTest::EmptyFolder() {
  ExpectSoundFiles();
  for (const auto& file : fs::directory_iterator(folder())) fs::remove_all(file.path());
  fs::remove(notes_);
}

void ScriptTest::ExpectSoundFiles() const {
  std::map<std::string, bool> must;
  std::ifstream lines(notes_);
  for (std::string line; std::getline(lines, line);) must[line.substr(1)] = line[0] == '+';
  for (const auto& file : fs::recursive_directory_iterator(folder())) {
    const std::string name = file.path().lexically_relative(folder()).string();
    if (!file.is_regular_file() || !must.emplace(name, true).first->second) continue;
    const std::string bytes = ReadAll(name);
    if (bytes.rfind("MORV RUX meta", 0) != 0) continue;
    const rux::compiled::Faults faults = rux::compiled::Verify(bytes);
    EXPECT_TRUE(faults.empty()) << name << ": " << rux::compiled::FaultText(faults.list().front());
  }
}

std::string ScriptTest::Path(const std::string& name) const { return folder_ / name; }

std::string ScriptTest::ScriptPath(const std::string& name) const {
  return folder_.ScriptPath(name);
}

void ScriptTest::Write(const std::string& name, const std::string& content) {
  folder_.Write(name, content);
  ExpectUnsound(name);
}

void ScriptTest::ExpectUnsound(const std::string& name) { MustBeSound(name, false); }

void ScriptTest::MustBeSound(const std::string& name, bool must) {
  std::ofstream(notes_, std::ios::app) << (must ? '+' : '-') << name << '\n';
}

std::string ScriptTest::ReadAll(const std::string& name) const { return folder_.Read(name); }

Lines ScriptTest::Parse(const std::string& text) {
  Write("board.rux", text);
  ModelMustBeSound(false);  // until it is checked
  EXPECT_NE(gccCompStart(ScriptPath("board.rux")), 0u);
  gccParse();
  return host::TakeMessages();
}

std::uint32_t ScriptTest::CheckModel() {
  const std::uint32_t valid = gccCheck();
  ModelMustBeSound(valid != 0);
  return valid;
}

void ScriptTest::ModelMustBeSound(bool must) {
  for (const char* name : {"board.meta", "board.metad"}) MustBeSound(name, must);
}

Lines ScriptTest::Check(const std::string& text, std::uint32_t valid) {
  Parse(text);
  EXPECT_EQ(CheckModel(), valid);
  return host::TakeMessages();
}

std::string ScriptTest::Compile(const std::string& text) {
  EXPECT_EQ(Check(text, 1), Lines{});
  EXPECT_EQ(gccOutput(Path("board.meta")), 1u);
  std::string meta = ReadAll("board.meta");
  EXPECT_GE(meta.size(), 24u);
  return meta.replace(20, 4, 4, '\0');
}
