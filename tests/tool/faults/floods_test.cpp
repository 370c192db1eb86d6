// Scripts with millions of problems, in an address space in proportion to their size.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>

#include "tests/support/temp_folder.h"
#include "tests/tool/faults/rux_process.h"

namespace {

// A sanitizer reserves more memory than there is.
#ifndef RUX_SANITIZED

// A script of `head` and as many lines as make it large; in each, a number takes the place of '@'.
struct Flood {
  const char* name;
  std::string head;
  std::string line;
  // Of each line, and of the script as a whole.
  std::size_t errors_a_line;
  std::size_t warnings_a_line;
  std::size_t warnings;
};

// For the list of tests.
void PrintTo(const Flood& flood, std::ostream* out) { *out << flood.name; }

const Flood kFloods[] = {
    // PARENT, NAME, ID, TYPE, INITFLAG, CONTROLMASK and VALUE are missing; SYSTEM.
    {"SectionsWithoutEntries", "[MORVRUX]\nVERSION = 1\n", "[SENSOR]\n", 7, 0, 1},
    // An unknown section, and text after its header.
    {"ALogFile", "", "[12:00:01] fan 3 stalled\n", 1, 1, 0},
    // Names that do not begin with G_.
    {"LinesOfOneCharacter", "[GLOBAL]\n", "A\n", 1, 0, 0},
    {"QuotesWithoutEnd", "[PROPERTY]\n", "A@ = \"x\n", 1, 0, 0},
    {"SurplusValues", "[PROPERTY]\n", "A@ = 1, 2\n", 0, 1, 0},
    {"UnknownSensors", "[PELMGROUP]\nNAME = A\nID = 1\nPID = 0\nSENSORS = 1", ",@", 1, 0, 0},
};

class FloodsTest : public testing::TestWithParam<Flood> {
 protected:
  static constexpr std::size_t kSize = 6'000'000;
  static constexpr std::size_t kBytesEach = 64;  // of memory, for a byte of script

  void SetUp() override {
    const Flood& flood = GetParam();
    std::string script = flood.head;
    for (; script.size() < kSize; ++lines_) {
      const std::size_t at = std::min(flood.line.find('@'), flood.line.size());
      script.append(flood.line, 0, at);
      if (at == flood.line.size()) continue;
      script.append(std::to_string(lines_ + 2)).append(flood.line, at + 1);
    }
    folder_.Write("board.rux", script);
  }

  Ended Run(const Arguments& arguments) const {
    return RuxProcess(folder_.path(), arguments,
                      [] {
                        // What the program has of its own, and what it may take.
                        constexpr rlim_t kMost = (rlim_t{64} << 20) + kBytesEach * kSize;
                        const rlimit both = {kMost, kMost};
                        setrlimit(RLIMIT_AS, &both);
                      })
        .Wait();
  }

  static std::string LastLine(const Ended& ended) {
    const std::size_t end = ended.errors.rfind('\n', ended.errors.size() - 2);
    return end == std::string::npos ? ended.errors : ended.errors.substr(end + 1);
  }

  static std::string Summary(std::size_t errors, std::size_t warnings) {
    return "board.rux: " + std::to_string(errors) + " errors, " + std::to_string(warnings) +
           (warnings == 1 ? " warning\n" : " warnings\n");
  }

  // A list has an element more.
  std::size_t errors() const {
    const bool is_list = GetParam().line.front() == ',';
    return (lines_ + (is_list ? 1 : 0)) * GetParam().errors_a_line;
  }
  std::size_t warnings() const { return GetParam().warnings + lines_ * GetParam().warnings_a_line; }

  const TempFolder folder_;
  std::size_t lines_ = 0;
};

TEST_P(FloodsTest, AreCounted) {
  const Ended checked = Run({"check", "board.rux"});
  EXPECT_EQ(checked.exit_status, errors() > 0 ? 1 : 0);
  EXPECT_EQ(LastLine(checked), Summary(errors(), warnings()));
  EXPECT_LT(checked.errors.size(), 2'000'000U);
  const Ended compiled = Run({"compile", "board.rux", "--werror", "-o", "board.meta"});
  EXPECT_EQ(compiled.exit_status, 1);
  EXPECT_EQ(LastLine(compiled), Summary(errors() + warnings(), 0));
}

// The forms show the same diagnostics: two floods are enough to see it.
class FloodFormsTest : public FloodsTest {};

TEST_P(FloodFormsTest, FitIntoMemory) {
  for (const char* form : {"gcc", "json", "sarif", "junit", "github"}) {
    const Ended ended =
        Run({"check", "board.rux", "--format", form, "--diagnostics-file", "written"});
    EXPECT_EQ(LastLine(ended), Summary(errors(), warnings())) << form;
    const std::string written = folder_.Read("written");
    EXPECT_NE(written.find(form == std::string("json") ? "not_shown\": " : "not shown"),
              std::string::npos);
    EXPECT_LT(written.size(), 2'000'000U) << form;
  }
}

std::string NameOfFlood(const testing::TestParamInfo<Flood>& flood) { return flood.param.name; }

INSTANTIATE_TEST_SUITE_P(Scripts, FloodsTest, testing::ValuesIn(kFloods), NameOfFlood);
INSTANTIATE_TEST_SUITE_P(Scripts, FloodFormsTest, testing::ValuesIn(kFloods, kFloods + 2),
                         NameOfFlood);

#endif

}  // namespace
