// The wrong example of a message yields that message and no other; the right one yields none. Notes
// come with others.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/registry.h"
#include "driver/messages.h"
#include "lint/lint_rows.h"
#include "rules/rule_report.h"
#include "tests/support/temp_folder.h"

namespace {

std::string OutputOf(const std::string& command) {
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  std::string output;
  char buffer[4096];
  while (pipe != nullptr && std::fgets(buffer, sizeof(buffer), pipe.get()) != nullptr) {
    output += buffer;
  }
  return output;
}

class ExamplesTest : public testing::Test {
 protected:
  void SetUp() override { folder_.Write("machine.rux", rux::diagnostics::kMachineScript); }

  // The ids of all that compiling the script reports.
  std::set<std::string> IdsOf(std::string_view script, const char* options) const {
    folder_.Write("board.rux", script);
    const std::string output =
        OutputOf("cd " + folder_.path() + " && " RUX_PROGRAM " compile board.rux -W all" +
                 std::string(options) + " 2>&1");
    EXPECT_NE(output.find("board.rux: "), std::string::npos) << output;
    static const std::regex form(": (?:error|warning|note): .* \\[([a-z0-9-]+)\\]\n");
    std::set<std::string> ids;
    for (std::sregex_iterator found(output.begin(), output.end(), form), end; found != end;
         ++found) {
      ids.insert((*found)[1]);
    }
    return ids;
  }

  const TempFolder folder_;
};

TEST_F(ExamplesTest, WrongOnesYieldTheirMessageAndRightOnesNone) {
  std::size_t tried = 0;
  for (const rux::diagnostics::MessageRow* each : rux::driver::AllMessages().rows()) {
    const rux::diagnostics::MessageRow& row = *each;
    if (row.wrong.empty()) continue;
    ++tried;
    SCOPED_TRACE(std::string(row.id));
    // That one is about the debug meta file.
    const char* options = each == &rux::driver::kIncludeFirst ? " -g board.metad" : "";
    if (row.severity == rux::diagnostics::Severity::kNote) {
      const char* const with_notes = " --verbose -W no-error=missing-include";
      EXPECT_EQ(IdsOf(row.wrong, with_notes).count(std::string(row.id)), 1U) << row.wrong;
      EXPECT_EQ(IdsOf(row.right, with_notes).count(std::string(row.id)), 0U) << row.right;
      continue;
    }
    EXPECT_EQ(IdsOf(row.wrong, options), std::set<std::string>({std::string(row.id)})) << row.wrong;
    EXPECT_EQ(IdsOf(row.right, options), std::set<std::string>()) << row.right;
  }
  EXPECT_GE(tried, 40U);
}

// Besides the example, a case shows what a rule says, and of which place.
TEST(RuleRowsTest, EveryRuleHasACase) {
  std::string cases;
  for (const auto& file : std::filesystem::recursive_directory_iterator(RUX_CASES)) {
    if (!file.is_regular_file()) continue;
    std::ifstream stream(file.path());
    cases.append(std::istreambuf_iterator<char>(stream), {});
  }
  std::vector<const rux::diagnostics::MessageRow*> rules(std::begin(rux::rules::kRows),
                                                         std::end(rux::rules::kRows));
  rules.insert(rules.end(), std::begin(rux::lint::kRows), std::end(rux::lint::kRows));
  for (const rux::diagnostics::MessageRow* row : rules) {
    EXPECT_NE(cases.find('[' + std::string(row->id) + "]\n"), std::string::npos)
        << "no case in tests/tool/cases shows " << row->id;
  }
}

TEST(MessageRowsTest, IdsAreKebabCaseAndSummariesOneLine) {
  const std::regex kebab_case("[a-z0-9]+(-[a-z0-9]+)*");
  std::set<std::string_view> ids;
  for (const rux::diagnostics::MessageRow* each : rux::driver::AllMessages().rows()) {
    const rux::diagnostics::MessageRow& row = *each;
    SCOPED_TRACE(std::string(row.id));
    EXPECT_TRUE(std::regex_match(std::string(row.id), kebab_case));
    EXPECT_TRUE(ids.insert(row.id).second);
    EXPECT_LE(row.summary.size(), 75U);
    EXPECT_NE(row.summary.back(), '.');
    EXPECT_EQ(row.explanation.back(), '.');
    EXPECT_EQ(row.wrong.empty(), row.right.empty());
    for (const std::string_view example : {row.wrong, row.right}) {
      EXPECT_TRUE(example.empty() || example.back() == '\n');
    }
  }
}

}  // namespace
