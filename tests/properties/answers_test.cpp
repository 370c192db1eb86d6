// The queries on a meta file answer what the script says, and so does the read model.
#include "compiled/verify.h"
#include "ruxcomp/model.h"
#include "tests/properties/expected_answers.h"
#include "tests/properties/model_test.h"
#include "tests/read_model/same_answers.h"

namespace {

class Answers : public ModelTest {};

TEST_P(Answers, AreWhatTheScriptSays) {
  ForEachSeed(1000, [&](std::uint32_t seed) {
    Random random(seed);
    std::vector<RandomSection> sections = RandomScript(random);
    const SourceFiles files = WriteModel(random, sections);
    SCOPED_TRACE("seed " + std::to_string(seed) + '\n' + TextOf(files));
    InOwnProcess([&] {
      ParseAndCheck(ScriptPath("board.rux"), 1);
      EXPECT_EQ(gccOutput(Path("board.meta")), 1u);
      gccCompEnd();
      ASSERT_EQ(gcInit(Path("board.meta")), 1u);
      ExpectAnswers(MeaningOf(sections));
      ExpectSameAnswers(ruxcomp::Model::OfLoaded());
      ASSERT_TRUE(rux::compiled::Verify(ReadAll("board.meta")).empty());
      ExpectSameAnswers(ruxcomp::Model::OfVerified(ReadAll("board.meta")).value());
    });
  });
}

INSTANTIATE_TEST_SUITE_P(Models, Answers, testing::Range(0u, kParts));

}  // namespace
