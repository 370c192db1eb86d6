// Whatever a machine is like, everything in it can be evaluated under any profile: to the same each
// time, with a reason for what is unknown.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <ios>
#include <string>
#include <vector>

#include "machine/load.h"
#include "machine/machine.h"
#include "profile/profile.h"
#include "tests/evaluation/everything.h"
#include "tests/generators/random_layout.h"
#include "tests/generators/random_script.h"
#include "tests/generators/random_texts.h"
#include "tests/generators/source_files.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostTargets = 400;

// Returns how many accesses were found.
std::size_t EvaluateAll(const rux::machine::Machine& machine, std::uint32_t seed) {
  Random random(seed);
  const evaluating::Pick pick = [&](std::size_t bound) { return random.Below(bound); };
  const evaluating::Expect expect = [&](bool holds, const char* promise) {
    EXPECT_TRUE(holds) << promise << ": " << machine.name() << ", seed " << seed;
  };
  const rux::profile::Profile profile = evaluating::AnyProfile(pick);
  std::size_t accesses = 0;
  for (const evaluating::Target& target : evaluating::TargetsOf(machine, kMostTargets))
    accesses += evaluating::EvaluateTwice(machine, profile, target, pick, expect);
  return accesses;
}

TEST(Evaluation, ExamplesComeToTheSameEachTime) {
  const std::vector<rux::machine::Machine> machines =
      rux::machine::Load({RUX_EXAMPLES "/server/server.rux", RUX_EXAMPLES "/first/first.rux"}, {});
  std::size_t accesses = 0;
  for (const rux::machine::Machine& machine : machines) {
    for (std::uint32_t seed = 0; seed < 4; ++seed) accesses += EvaluateAll(machine, seed);
  }
  EXPECT_GT(accesses, 100U);
}

TEST(Evaluation, RandomMachinesComeToTheSameEachTime) {
  std::string folder = (fs::temp_directory_path() / "rux-evaluation-XXXXXX").string();
  ASSERT_NE(mkdtemp(folder.data()), nullptr);
  std::vector<std::string> scripts;
  constexpr std::uint32_t kMachines = 25;
  for (std::uint32_t seed = 0; seed < kMachines; ++seed) {
    Random random(seed);
    std::vector<RandomSection> sections = RandomScript(random, {false, false});
    const fs::path place = fs::path(folder) / std::to_string(seed);
    const SourceFiles files = RandomLayout(random, sections);
    for (const auto& [name, text] : files) {
      fs::create_directories((place / name).parent_path());
      std::ofstream(place / name, std::ios::binary) << text;
    }
    scripts.push_back((place / files.front().first).string());
  }
  const std::vector<rux::machine::Machine> machines = rux::machine::Load(scripts, {});
  for (std::uint32_t seed = 0; seed < kMachines; ++seed) EvaluateAll(machines[seed], seed);
  fs::remove_all(folder);
}

}  // namespace
