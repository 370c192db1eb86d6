// Decompiled scripts mean the same: they compile to the same meta file and, decompiled again, are
// the same.
#include "tests/tool/decompile/round_trip.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/generators/random_layout.h"
#include "tests/generators/random_script.h"
#include "tests/tool/decompile/model_compare.h"

namespace {

void ExpectSameMeaning(const RoundTrip& trip) {
  ASSERT_EQ(trip.status, 0) << trip.messages;
  EXPECT_TRUE(trip.meta == trip.meta_again);
  EXPECT_EQ(DifferenceOf(trip.debug_meta, trip.debug_meta_again), "");
  EXPECT_EQ(trip.script, trip.script_again);
}

TEST(Decompile, FirstExampleMeansTheSame) {
  ExpectSameMeaning(TakeRoundTrip(std::string(RUX_EXAMPLES "/first/first.rux")));
}

TEST(Decompile, ServerExampleMeansTheSame) {
  ExpectSameMeaning(TakeRoundTrip(std::string(RUX_EXAMPLES "/server/server.rux")));
}

// Many seeds a test: every one takes four runs of the program, which sanitizers slow down a lot.
constexpr std::uint32_t kBlocks = 16;
#ifdef RUX_SANITIZED
constexpr std::uint32_t kSeedsPerBlock = 5;
#else
constexpr std::uint32_t kSeedsPerBlock = 25;
#endif

class RandomScripts : public testing::TestWithParam<std::uint32_t> {};

TEST_P(RandomScripts, MeanTheSame) {
  for (std::uint32_t i = 0; i < kSeedsPerBlock && !HasFailure(); ++i) {
    const std::uint32_t seed = GetParam() * kSeedsPerBlock + i;
    Random random(seed);
    std::vector<RandomSection> sections = RandomScript(random);
    const SourceFiles files = RandomLayout(random, sections);
    SCOPED_TRACE("seed " + std::to_string(seed) + '\n' + TextOf(files));
    ExpectSameMeaning(TakeRoundTrip(files));
  }
}

INSTANTIATE_TEST_SUITE_P(Decompile, RandomScripts, testing::Range(0u, kBlocks));

}  // namespace
