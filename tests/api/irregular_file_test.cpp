// Paths that lead to pipes and devices: nobody waits for them.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

#include "tests/support/host.h"
#include "tests/support/script_test.h"

namespace {

class IrregularFileTest : public ScriptTest {
 protected:
  void SetUp() override {
    ScriptTest::SetUp();
    ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
  }
};

TEST_F(IrregularFileTest, AMetaFileIsARegularFile) {
  for (const std::string& path : {Path("pipe"), folder(), std::string("/dev/zero")}) {
    SCOPED_TRACE(path);
    gcSetLastError(70);
    EXPECT_EQ(gcInit(path), 0u);
    EXPECT_EQ(gcGetLastError(), 13u);
  }
}

TEST_F(IrregularFileTest, ADebugMetaFileIsARegularFile) {
  for (const std::string& path : {Path("pipe"), folder(), std::string("/dev/zero")}) {
    SCOPED_TRACE(path);
    EXPECT_EQ(gdInit(path), 0u);
    EXPECT_EQ(host::TakeMessages(), (Lines{"ERROR: Open debug file " + path + " failed.\n"}));
  }
}

TEST_F(IrregularFileTest, AScriptIsNoNamedPipe) {
  EXPECT_EQ(gccCompStart(ScriptPath("pipe")), 0u);
  EXPECT_EQ(gccCompStart("/dev/zero"), 0u);
  EXPECT_EQ(host::TakeMessages(), Lines{});
}

TEST_F(IrregularFileTest, AnIncludedFileIsNoNamedPipe) {
  EXPECT_EQ(Parse("[INCLUDE]\nFILE = pipe\n"),
            (Lines{"Warning[board.rux:2], [INCLUDE]:FILE FILE pipe cannot be loaded.\n",
                   "Parse::No more sections(total = 1).\n"}));
}

// As a shell's <(...) hands it over.
TEST_F(IrregularFileTest, AScriptMayBeAnOpenPipe) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  ASSERT_EQ(write(ends[1], "[FOO]\n", 6), 6);
  close(ends[1]);
  EXPECT_EQ(gccCompStart("/dev/fd/" + std::to_string(ends[0])), 1u);
  close(ends[0]);
  gccParse();
  EXPECT_EQ(host::TakeMessages(), (Lines{"Create section(1, FOO) object failed.\n",
                                         "Parse::No more sections(total = 1).\n"}));
}

}  // namespace
