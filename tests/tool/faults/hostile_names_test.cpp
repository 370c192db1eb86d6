// Names and texts that would steer a terminal, hide, or add lines to the log of a service that
// takes some lines for commands: in every command, through every end that it can come to.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/temp_folder.h"
#include "tests/tool/faults/board_folder.h"
#include "tests/tool/faults/rux_process.h"

namespace {

namespace fs = std::filesystem;

// Escapes, ends of lines, C1 as a byte and as a character, turned and hidden text, a separator of
// lines, bytes that are no UTF-8.
const std::string kNames[] = {
    "a\n::error::b\x1B[2Jc\rd\x9B"
    "e\xC2\x9B"
    "f\xE2\x80\xAEg\xE2\x80\x8Bh\xE2\x80\xA8i\xD8\x9Cj\xFFk\x7Fl\xE2\x82m",
    "::error::x",
    "\xEF\xBB\xBF::error::x\xC3",
};

// The character at the beginning of a text and its bytes; 0 bytes: there is none. Overlong forms
// are not looked for.
struct Decoded {
  std::uint32_t code;
  std::size_t size;
};

Decoded Decode(std::string_view text) {
  const auto first = static_cast<unsigned char>(text.front());
  if (first < 0x80) return {first, 1};
  const std::size_t size = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || text.size() < size) return {0, 0};
  std::uint32_t code = first & (0x7Fu >> size);
  for (std::size_t i = 1; i < size; ++i) {
    const auto next = static_cast<unsigned char>(text[i]);
    if ((next & 0xC0) != 0x80) return {0, 0};
    code = code << 6 | (next & 0x3Fu);
  }
  return {code, size};
}

bool IsHarmful(std::uint32_t code) {
  if (code == '\t') return false;
  return code < 0x20 || (code >= 0x7F && code <= 0x9F) || code == 0x61C ||
         (code >= 0x200B && code <= 0x200F) || (code >= 0x2028 && code <= 0x202E) ||
         (code >= 0x2060 && code <= 0x206F) || code == 0xFEFF;
}

// What is wrong with a line that was printed; empty: nothing.
std::string WrongWith(std::string_view line, bool has_commands) {
  const std::size_t begin = std::min(line.find_first_not_of(" \t"), line.size());
  const std::string_view beginning = line.substr(begin);
  const bool is_command = beginning.substr(0, 2) == "::";
  const bool is_ours =
      beginning.substr(0, 13) == "::error file=" || beginning.substr(0, 15) == "::warning file=" ||
      beginning.substr(0, 14) == "::notice file=" || beginning.substr(0, 14) == "::error title=" ||
      beginning.substr(0, 16) == "::warning title=" || beginning.substr(0, 15) == "::notice title=";
  if (is_command && !(has_commands && is_ours)) return "it is a command";
  while (!line.empty()) {
    const Decoded character = Decode(line);
    if (character.size == 0) return "it is no UTF-8";
    if (IsHarmful(character.code)) return "it has character " + std::to_string(character.code);
    line.remove_prefix(character.size);
  }
  return "";
}

// Lines of a script cannot be broken.
std::string OnOneLine(std::string name) {
  std::replace(name.begin(), name.end(), '\n', ' ');
  return name;
}

// A script with everything that messages and listings quote.
std::string ScriptWith(const std::string& any_name) {
  const std::string name = OnOneLine(any_name);
  return "[MORVRUX]\nVERSION = 1\nk" + name + " = 1\n[k" + name + "]\n[INCLUDE]\nFILE = \"" + name +
         "\"\n[DEFINE]\nw" + name + " = 1\n[PROPERTY]\nk" + name + " = v" + name + "\n";
}

std::string WrongScriptWith(const std::string& name) {
  return ScriptWith(name) + "[PELMGROUP]\nNAME = n" + OnOneLine(name) + "\nID = i" +
         OnOneLine(name) + "\nPID = 0\nSENSORS =\n";
}

class HostileNamesTest : public testing::TestWithParam<std::size_t> {
 protected:
  void SetUp() override {
    Fill(folder_, {{"board.rux", ScriptWith(name_)}});
    const Arguments compile = {"compile",     "board.rux", "-g",
                               "board.metad", "-W",        "no-error=missing-include"};
    ASSERT_EQ(RuxProcess(folder_.path(), compile).Wait().exit_status, 0);
    sound_ = ContentsOf(folder_);
  }

  // Puts something under the name and runs the command.
  void ExpectNothingHarmful(const Arguments& arguments, const std::string& there = "") const {
    constexpr int kLastStatus = 3;
    const Ended ended = RuxProcess(folder_.path(), arguments, [&] {
                          dup2(STDERR_FILENO, STDOUT_FILENO);
                          alarm(20);  // nothing of this is to be waited for
                        }).Wait();
    const auto task = [&] { return testing::PrintToString(arguments) + " with " + there; };
    EXPECT_TRUE(ended.exit_status >= 0 && ended.exit_status <= kLastStatus)
        << task() << ": " << ended.exit_status << ", signal " << ended.signal;
    const bool has_commands =
        std::find(arguments.begin(), arguments.end(), "github") != arguments.end();
    std::istringstream lines(ended.errors);
    for (std::string line; std::getline(lines, line);) {
      EXPECT_EQ(WrongWith(line, has_commands), "")
          << testing::PrintToString(line) << " of " << task();
    }
  }

  const TempFolder folder_;
  const std::string name_ = kNames[GetParam()];
  Contents sound_;
};

// The commands that take the name for a file.
std::vector<Arguments> CommandsOn(const std::string& name) {
  std::vector<Arguments> commands = {
      {"check", name},
      {"check", "--verbose", name},
      {"check", name, "board.rux"},
      {"check", "@" + name},
      {"compile", name, "-o", "new.meta", "-g", "new.metad"},
      {"compile", name},
      {"compile", name, "-o", "new.meta", "--depfile", "new.d"},
      {"compile", "board.rux", "-o", name},
      {"compile", "board.rux", "-g", name},
      {"compile", "board.rux", "--depfile", name},
      {"compile", "board.rux", "--format", "json", "--diagnostics-file", name},
      {"compile", "-", "--stdin-name", name, "-o", "new.meta"},
      {"ls", name},
      {"ls", "--json", name},
      {"ls", name, "PROPERTY"},
      {"get", name, "PROPERTY/@0"},
      {"get", "--json", name, "PROPERTY/@0"},
      {"dump", name},
      {"dump", "--raw", name},
      {"dump", "--json", name},
      {"where", name, "PROPERTY/@0"},
      {"decompile", name, "-o", "new.rux"},
      {"decompile", "board.metad", "-o", name},
      {"verify", name},
      {"verify", "--json", name, "board.meta"},
  };
  for (const char* form : {"gcc", "json", "sarif", "junit", "github"}) {
    commands.push_back({"check", "--format", form, name});
  }
  return commands;
}

// What may be under a name, by what it is called here.
struct Thing {
  const char* what;
  std::function<void(const std::string& path, const Contents& sound, const std::string& name)> put;
};

void Write(const std::string& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

const Thing kThings[] = {
    {"nothing", [](auto&, auto&, auto&) {}},
    {"a folder", [](auto& path, auto&, auto&) { fs::create_directory(path); }},
    {"a loop", [](auto& path, auto&, auto&) { fs::create_symlink(path, path); }},
    {"text", [](auto& path, auto&, auto&) { Write(path, "no script, no file"); }},
    {"a script", [](auto& path, auto&, auto& name) { Write(path, ScriptWith(name)); }},
    {"a wrong script", [](auto& path, auto&, auto& name) { Write(path, WrongScriptWith(name)); }},
    {"a meta file", [](auto& path, auto& sound, auto&) { Write(path, sound.at("board.meta")); }},
    {"a damaged meta file",
     [](auto& path, auto& sound, auto&) { Write(path, sound.at("board.meta").substr(0, 300)); }},
    {"a debug meta file",
     [](auto& path, auto& sound, auto&) { Write(path, sound.at("board.metad")); }},
    {"a damaged debug meta file",
     [](auto& path, auto& sound, auto&) { Write(path, sound.at("board.metad").substr(0, 300)); }},
};

TEST_P(HostileNamesTest, OfFilesStayInTheirLines) {
  for (const Thing& thing : kThings) {
    for (const Arguments& command : CommandsOn(name_)) {
      Fill(folder_, sound_);
      thing.put(folder_ / name_, sound_, name_);
      ExpectNothingHarmful(command, thing.what);
    }
  }
}

// Commands on scripts may wait for pipes.
TEST_P(HostileNamesTest, OfPipesStayInTheirLines) {
  ASSERT_EQ(mkfifo((folder_ / name_).c_str(), 0666), 0);
  for (const char* command : {"ls", "dump", "decompile", "verify"}) {
    ExpectNothingHarmful({command, name_});
  }
  ExpectNothingHarmful({"get", name_, "PROPERTY/@0"});
  ExpectNothingHarmful({"where", name_, "PROPERTY/@0"});
}

TEST_P(HostileNamesTest, AsOtherArgumentsStayInTheirLines) {
  const std::vector<Arguments> commands = {
      {name_},
      {"--" + name_},
      {"check", "--" + name_, "board.rux"},
      {"check", "--format", name_, "board.rux"},
      {"check", "--format=" + name_, "board.rux"},
      {"check", "--color", name_, "board.rux"},
      {"check", "-W", name_, "board.rux"},
      {"check", "-W", "no-" + name_, "board.rux"},
      {"check", "-j", name_, "board.rux"},
      {"check", "--max-errors", name_, "board.rux"},
      {"check", "--stdin-name", name_, "board.rux"},
      {"compile", "board.rux", "board.rux", "-o", name_},
      {"ls", "board.meta", name_},
      {"ls", "board.meta", "PROPERTY", name_},
      {"get", "board.meta", name_},
      {"get", "board.meta", '"' + name_},
      {"get", "board.meta", '"' + name_ + "\"x"},
      {"get", "board.meta", "PROPERTY/" + name_},
      {"get", "board.meta", "PROPERTY/@0/" + name_},
      {"get", "board.meta", "PROPERTY/@" + name_},
      {"where", "board.metad", name_},
      {"where", "board.metad", "WORD/" + name_},
      {"where", "board.metad", "PROPERTY/@0/" + name_},
      {"explain", name_},
      {"explain", "--format", name_},
  };
  for (const Arguments& command : commands) ExpectNothingHarmful(command);
}

TEST_P(HostileNamesTest, InTheEnvironmentStayInTheirLines) {
  setenv("SOURCE_DATE_EPOCH", name_.c_str(), 1);
  ExpectNothingHarmful({"compile", "board.rux"});
  unsetenv("SOURCE_DATE_EPOCH");
}

// What sanitizers find, they find with one name as with several.
#ifdef RUX_SANITIZED
constexpr std::size_t kNameCount = 1;
#else
constexpr std::size_t kNameCount = std::size(kNames);
#endif
INSTANTIATE_TEST_SUITE_P(Names, HostileNamesTest, testing::Range(std::size_t{0}, kNameCount));

}  // namespace
