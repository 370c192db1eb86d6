// Scripts that were opened and never read.
#include "tests/support/host.h"
#include "tests/support/script_test.h"

namespace {

class AbandonedScriptTest : public ScriptTest {
 protected:
  void SetUp() override {
    ScriptTest::SetUp();
    Write("board.rux", "[INCLUDE]\nFILE = fans.rux\nFILE = board.rux\n");
    Write("fans.rux", "[DEFINE]\nFANS = 4\n");
  }

  std::uint32_t Start(const std::string& name) { return gccCompStart(ScriptPath(name)); }
};

const Lines kRead = {"Parse::No more sections(total = 1).\n",
                     "Warning[board.rux:3], [INCLUDE]:FILE FILE board.rux cannot be loaded.\n",
                     "Parse::No more sections(total = 1).\n"};

TEST_F(AbandonedScriptTest, IsStartedAgainAfterTheEndOfItsRun) {
  ASSERT_EQ(Start("board.rux"), 1u);
  gccCompEnd();
  ASSERT_EQ(Start("board.rux"), 1u);
  gccParse();
  EXPECT_EQ(host::TakeMessages(), kRead);
}

TEST_F(AbandonedScriptTest, IsStartedAgainAtOnce) {
  ASSERT_EQ(Start("board.rux"), 1u);
  ASSERT_EQ(Start("fans.rux"), 1u);
  ASSERT_EQ(Start("board.rux"), 1u);
  gccParse();
  EXPECT_EQ(host::TakeMessages(), kRead);
}

// More than may include each other, and more than a run may open in all.
TEST_F(AbandonedScriptTest, ManyDoNotCountAsIncludes) {
  for (int i = 0; i < 70000; ++i) ASSERT_EQ(Start("fans.rux"), 1u) << i;
  ASSERT_EQ(Start("board.rux"), 1u);
  gccParse();
  EXPECT_EQ(host::TakeMessages(), kRead);
}

}  // namespace
