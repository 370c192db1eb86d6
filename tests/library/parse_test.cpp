// Reading a script: the messages of the parse loop.
#include "tests/support/host.h"
#include "tests/support/script_test.h"

namespace {

using ParseTest = ScriptTest;

TEST_F(ParseTest, ScriptWithoutSectionsEndsWithATotalOfZero) {
  EXPECT_EQ(Parse(""), Lines{"Parse::No more sections(total = 0).\n"});
  EXPECT_EQ(gccCheck(), 1u);
  EXPECT_EQ(host::TakeMessages(), Lines{});
}

TEST_F(ParseTest, UnknownSectionIsNumberedFromOneAndItsItemsAreNotLookedAt) {
  EXPECT_EQ(
      Parse("[PROPERTY]\nA = x\n[FOO]\nBAD\n3 = y\n"),
      (Lines{"Create section(2, FOO) object failed.\n", "Parse::No more sections(total = 2).\n"}));
}

}  // namespace
