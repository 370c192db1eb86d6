// Runs the files of cases/, each as a test of its own: the real program, in a folder of its own.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/temp_folder.h"
#include "tests/tool/case_file.h"
#include "tests/tool/needs.h"

namespace {

namespace fs = std::filesystem;

std::vector<std::string> CasePaths() {
  std::vector<std::string> paths;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(RUX_CASES)) {
    if (entry.path().extension() == ".txt") {
      paths.push_back(fs::relative(entry.path(), RUX_CASES).string());
    }
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

std::string TestNameOf(const testing::TestParamInfo<std::string>& info) {
  std::string name = fs::path(info.param).replace_extension().string();
  for (char& c : name) {
    if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
  }
  return name;
}

// Replaces what follows `lead` and has digits where `form` has zeros.
void ReplaceTimes(std::string& text, const std::string& lead, const std::string& form) {
  for (std::size_t at = 0; (at = text.find(lead, at)) != std::string::npos;) {
    at += lead.size();
    std::string found = text.substr(at, form.size());
    for (char& c : found) {
      if (std::isdigit(static_cast<unsigned char>(c)) != 0) c = '0';
    }
    if (found == form) text.replace(at, form.size(), "<time>");
  }
}

class ToolCase : public testing::TestWithParam<std::string> {
 protected:
  void SetUp() override { fs::create_directory(folder_ / "work"); }

  // Runs shell commands in the case's folder and returns their exit status.
  int Run(const std::string& commands) const {
    folder_.Write("run", commands);
    const std::string path = fs::path(RUX_PROGRAM).parent_path().string();
    std::ostringstream line;
    line << "cd " << fs::path(folder_ / "work") << " && LC_ALL=C PATH=" << path << ":$PATH"
         << " BOARDS=" << RUX_BOARDS << " DOCS=" << RUX_DOCS << " SCHEMAS=" << RUX_SCHEMAS
         << " INSTALLED=" << RUX_INSTALLED << " READER=" << RUX_READER
         << " OTHER_READER=" << RUX_OTHER_READER << " LIMITED='" << LimitedCommand() << "'"
         << " COLUMNS= sh ../run > ../stdout 2> ../stderr < /dev/null";
    const int status = std::system(line.str().c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  // What was printed, with what differs from run to run replaced.
  std::string Printed(const char* stream) const {
    std::string text = folder_.Read(stream);
    ReplaceTimes(text, "created ", "0000-00-00 00:00:00");
    ReplaceTimes(text, "\"created\": ", "0000000000");
    const std::string folder = folder_ / "work";
    for (std::size_t at; (at = text.find(folder)) != std::string::npos;) {
      text.replace(at, folder.size(), "<folder>");
    }
    return text;
  }

  const TempFolder folder_;
};

TEST_P(ToolCase, DoesWhatItSays) {
  const CaseFile expected = ReadCaseFile((fs::path(RUX_CASES) / GetParam()).string());
  const std::string missing = WhatIsMissing(expected.needs, RUX_PROGRAM);
  if (!missing.empty()) GTEST_SKIP() << missing;
  for (const auto& [path, contents] : expected.files) folder_.Write("work/" + path, contents);
  EXPECT_EQ(Run(expected.run), expected.exit_status);
  EXPECT_EQ(Printed("stdout"), expected.standard_output);
  EXPECT_EQ(Printed("stderr"), expected.standard_error);
}

INSTANTIATE_TEST_SUITE_P(Tool, ToolCase, testing::ValuesIn(CasePaths()), TestNameOf);

#define COMMAND(name, set_up, help) #name,
constexpr const char* kCommands[] = {
#include "tool/commands.def"
};

TEST(ToolCases, EveryCommandHasSome) {
  for (const std::string command : kCommands) {
    EXPECT_TRUE(fs::is_directory(fs::path(RUX_CASES) / command))
        << "there is no tests/tool/cases/" << command;
  }
}

}  // namespace
