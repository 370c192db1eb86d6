// Hosts that have paths with slashes.
#include <algorithm>

#include "tests/support/host.h"
#include "tests/support/script_test.h"

namespace {

class ScriptPathTest : public ScriptTest {
 protected:
  void SetUp() override {
    ScriptTest::SetUp();
    Write("words.rux", "[PROPERTY]\n1 = x\n");
    Write("board.rux", "[INCLUDE]\nFILE = words.rux\n");
  }

  // One section: that of the script alone.
  static constexpr const char* kNothingMore = "Parse::No more sections(total = 1).\n";
};

TEST_F(ScriptPathTest, WithSlashesIncludedFilesAreNotFound) {
  const std::string script = Path("board.rux");
  ASSERT_EQ(gccCompStart(script), 1u);
  gccParse();
  EXPECT_EQ(host::TakeMessages(),
            (Lines{"Warning[" + script + ":2], [INCLUDE]:FILE FILE words.rux cannot be loaded.\n",
                   kNothingMore}));
}

TEST_F(ScriptPathTest, WithBackslashesForThemTheyAre) {
  std::string script = Path("board.rux");
  std::replace(script.begin(), script.end(), '/', '\\');
  ASSERT_EQ(gccCompStart(script), 1u);
  gccParse();
  EXPECT_EQ(host::TakeMessages(), (Lines{kNothingMore, kNothingMore}));
}

}  // namespace
