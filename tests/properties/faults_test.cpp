// What the check reports about a script follows from what is wrong with the script, to the letter.
#include "tests/properties/model_test.h"
#include "tests/properties/random_fault.h"

namespace {

class Faults : public ModelTest {
 protected:
  // Lays the sections out and compiles them in a process of its own: the messages of gccCheck must
  // be what they should be now.
  void ExpectMessages(std::uint32_t seed, Random& random, std::vector<RandomSection>& sections,
                      const FaultMessages& messages) {
    const SourceFiles files = WriteModel(random, sections);
    SCOPED_TRACE("seed " + std::to_string(seed) + '\n' + TextOf(files));
    const Lines expected = messages(sections);
    InOwnProcess([&] {
      EXPECT_NE(gccCompStart(ScriptPath("board.rux")), 0u);
      gccParse();
      host::TakeMessages();
      EXPECT_EQ(gccCheck(), expected.empty() ? 1u : 0u);
      EXPECT_EQ(host::TakeMessages(), expected);
    });
  }

  static constexpr ScriptOptions kUnremarkable = {false, true};
};

TEST_P(Faults, NothingIsToldOfAnUnremarkableScript) {
  ForEachSeed(400, [&](std::uint32_t seed) {
    Random random(seed);
    std::vector<RandomSection> sections = RandomScript(random, kUnremarkable);
    ExpectMessages(seed, random, sections, [](const auto&) { return Lines{}; });
  });
}

TEST_P(Faults, OneFaultIsToldOfAlone) {
  ForEachSeed(1200, [&](std::uint32_t seed) {
    Random random(seed);
    std::vector<RandomSection> sections = RandomScript(random, kUnremarkable);
    const FaultMessages messages = AddRandomFault(random, sections);
    ExpectMessages(seed, random, sections, messages);
  });
}

INSTANTIATE_TEST_SUITE_P(Models, Faults, testing::Range(0u, kParts));

}  // namespace
