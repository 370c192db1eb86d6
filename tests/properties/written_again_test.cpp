// A meta file that is read and written again is the same but for the time.
#include "backend/compile_pass.h"
#include "tests/properties/model_test.h"
#include "tests/support/bytes.h"

using namespace ruxcomp::core;

namespace {

class WrittenAgain : public ModelTest {
 protected:
  std::string WithoutTime(const std::string& name) const {
    return ReadAll(name).replace(20, 4, 4, '\0');
  }
};

TEST_P(WrittenAgain, MetaFileIsTheSame) {
  ScriptOptions options;
  options.pelm_properties = false;
  ForEachSeed(600, [&](std::uint32_t seed) {
    Random random(seed);
    std::vector<RandomSection> sections = RandomScript(random, options);
    const SourceFiles files = WriteModel(random, sections);
    SCOPED_TRACE("seed " + std::to_string(seed) + '\n' + TextOf(files));
    InOwnProcess([&] {
      ParseAndCheck(ScriptPath("board.rux"), 1);
      EXPECT_EQ(gccOutput(Path("first.meta")), 1u);
    });
    InOwnProcess([&] {
      ASSERT_EQ(ReadMeta(Path("first.meta"), nullptr), 1u);
      EXPECT_EQ(WriteMeta(Path("second.meta"), {}), 1u);
    });
    EXPECT_TRUE(SameBytes(WithoutTime("second.meta"), WithoutTime("first.meta")));
  });
}

INSTANTIATE_TEST_SUITE_P(Models, WrittenAgain, testing::Range(0u, kParts));

}  // namespace
