// The manifest of a release finds each byte that changes; what dependency files say comes back as
// it was written, and what is written into a manifest by others is refused or read.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "driver/meta_files.h"
#include "release/inspection.h"
#include "release/making.h"
#include "release/manifest.h"
#include "support/failure.h"
#include "tests/generators/garbage.h"
#include "tests/generators/random_texts.h"

namespace {

namespace fs = std::filesystem;
using rux::release::Manifest;

class Release : public ::testing::Test {
 protected:
  Release() : folder_((fs::temp_directory_path() / "rux-release-XXXXXX").string()) {
    EXPECT_NE(mkdtemp(folder_.data()), nullptr);
  }
  ~Release() override { fs::remove_all(folder_); }

  std::string Write(const std::string& name, const std::string& bytes) const {
    const std::string path = folder_ + '/' + name;
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }
  Manifest MakeOf(const std::vector<std::string>& files) const {
    return rux::release::ManifestOf({files, {}, folder_, "tool", "v1", 1});
  }
  std::vector<rux::release::Problem> ProblemsIn(const Manifest& manifest) const {
    return rux::release::ProblemsIn(manifest, {folder_ + "/manifest.json", "", false});
  }

 private:
  std::string folder_;
};

TEST_F(Release, EveryChangedByteIsFound) {
  Random random(1);
  std::string bytes = RandomGarbage(random) + "the last ones";
  const std::string path = Write("file", bytes);
  const Manifest manifest = MakeOf({path});
  EXPECT_TRUE(ProblemsIn(manifest).empty());
  for (int i = 0; i < 200; ++i) {
    const std::size_t at = random.Below(bytes.size());
    const char before = bytes[at];
    bytes[at] = static_cast<char>(bytes[at] ^ (1 << random.Below(8)));
    Write("file", bytes);
    const auto problems = ProblemsIn(manifest);
    ASSERT_EQ(problems.size(), 1U) << at;
    EXPECT_STREQ(problems.front().what, "changed");
    bytes[at] = before;
  }
  Write("file", bytes);
  EXPECT_TRUE(ProblemsIn(manifest).empty());
}

TEST_F(Release, AManifestThatIsReadIsTheOneThatWasWritten) {
  const Manifest manifest = MakeOf({Write("b", "2"), Write("a \"quoted\"\\\x01", "1")});
  const std::string text = rux::release::ManifestText(manifest);
  const std::string path = Write("manifest.json", text);
  EXPECT_EQ(rux::release::ManifestText(rux::release::ReadManifest(path)), text);
}

TEST_F(Release, ADamagedManifestIsRefusedOrRead) {
  const std::string text = rux::release::ManifestText(MakeOf({Write("a", "1"), Write("b", "2")}));
  std::size_t refused = 0;
  constexpr std::size_t kTries = 500;
  for (std::uint32_t seed = 0; seed < kTries; ++seed) {
    Random random(seed);
    std::string damaged = text;
    Damage(random, damaged);
    const std::string path = Write("manifest.json", damaged);
    try {
      const Manifest manifest = rux::release::ReadManifest(path);
      ProblemsIn(manifest);
    } catch (const rux::support::Failure& failure) {
      EXPECT_NE(std::string(failure.what()), "");
      ++refused;
    }
  }
  EXPECT_GT(refused, kTries / 2);
}

TEST_F(Release, DependencyFilesComeBackAsTheyWereWritten) {
  std::size_t written = 0;
  for (std::uint32_t seed = 0; seed < 500; ++seed) {
    Random random(seed);
    static constexpr char kCharacters[] = "ab /.#$:\\~%=\xC3\xA4";
    std::vector<std::string> names(1 + random.Below(4));
    for (std::string& name : names) {
      for (std::uint32_t i = random.Between(1, 6); i > 0; --i)
        name += kCharacters[random.Below(sizeof kCharacters - 1)];
      name += std::to_string(&name - names.data());  // all differ
    }
    std::string text;
    try {
      text = rux::driver::DepfileText("rule.d", {"out.meta"}, names);
    } catch (const rux::support::Failure&) {  // a name that no tool would read as it is
      continue;
    }
    const rux::driver::DepfileRule rule = rux::driver::ReadDepfile(Write("rule.d", text));
    EXPECT_EQ(rule.targets, std::vector<std::string>{"out.meta"}) << text;
    EXPECT_EQ(rule.prerequisites, names) << text;
    ++written;
  }
  EXPECT_GT(written, 75U);
}

TEST_F(Release, GarbageIsRefusedAsADependencyFileOrHasNames) {
  for (std::uint32_t seed = 0; seed < 200; ++seed) {
    Random random(seed);
    const std::string path = Write("rule.d", "a: " + RandomGarbage(random));
    try {
      for (const std::string& name : rux::driver::ReadDepfile(path).prerequisites)
        EXPECT_FALSE(name.empty());
    } catch (const rux::support::Failure& failure) {
      EXPECT_NE(std::string(failure.what()).find("rule.d"), std::string::npos);
    }
  }
}

}  // namespace
