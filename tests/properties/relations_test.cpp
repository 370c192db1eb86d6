// A script and the machine that it compiles to have the same links: found by the rules of the
// language in the one, read from what was compiled in the other.
#include "browse/relations.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "machine/load.h"
#include "machine/machine.h"
#include "support/failure.h"
#include "tests/generators/garbage.h"
#include "tests/generators/random_layout.h"
#include "tests/generators/random_script.h"
#include "tests/generators/random_texts.h"
#include "tests/generators/source_files.h"

namespace {

namespace fs = std::filesystem;
using rux::browse::Link;
using rux::browse::Relations;
using rux::browse::Thing;

class Relating : public ::testing::Test {
 protected:
  Relating() : folder_((fs::temp_directory_path() / "rux-relations-XXXXXX").string()) {
    EXPECT_NE(mkdtemp(folder_.data()), nullptr);
  }
  ~Relating() override { fs::remove_all(folder_); }

  // The path of the main script.
  std::string Write(const SourceFiles& files) const {
    for (const auto& [name, text] : files) {
      const fs::path path = fs::path(folder_) / name;
      fs::create_directories(path.parent_path());
      std::ofstream(path, std::ios::binary) << text;
    }
    return (fs::path(folder_) / files.front().first).string();
  }

 private:
  std::string folder_;
};

using End = std::tuple<std::string, std::string, std::uint32_t, std::string>;
using Ends = std::multiset<std::tuple<End, std::string, End>>;

End EndOf(const Thing& thing) {
  return {thing.kind->keyword, thing.name.value_or(""), thing.id.value_or(0), thing.key};
}

// Those between things of a meta file, which has no words.
Ends EndsOf(const Relations& relations) {
  Ends ends;
  for (std::size_t i = 0; i < relations.things().size(); ++i) {
    for (const Link* link : relations.From(i)) {
      const Thing& to = relations.things()[link->to];
      if (!relations.things()[i].kind->IsCompiled() || !to.kind->IsCompiled()) continue;
      // Both keys compile to the same.
      const std::string key = link->key == "VALUE_" ? "VALUE" : link->key;
      ends.insert({EndOf(relations.things()[i]), key, EndOf(to)});
    }
  }
  return ends;
}

Ends EndsOfMachine(const std::string& path) {
  const std::vector<rux::machine::Machine> machines = rux::machine::Load({path}, {});
  return EndsOf(rux::browse::MachineRelations(machines.front()));
}

// Where a word has the name of something else, the script refers to that, and its number is what is
// compiled.
TEST_F(Relating, EveryLinkOfACompiledMachineIsOneOfItsScript) {
  std::size_t links = 0;
  for (std::uint32_t seed = 0; seed < 60; ++seed) {
    Random random(seed);
    std::vector<RandomSection> sections = RandomScript(random, {false, false});
    const std::string script = Write(RandomLayout(random, sections));
    const Ends compiled = EndsOfMachine(script);
    const Ends written = EndsOf(rux::browse::ReadRelations(script, {}));
    Ends more;
    std::set_difference(compiled.begin(), compiled.end(), written.begin(), written.end(),
                        std::inserter(more, more.end()));
    EXPECT_EQ(more, Ends()) << "seed " << seed;
    links += compiled.size();
  }
  EXPECT_GT(links, 500U);
}

TEST_F(Relating, DamagedScriptsHaveLinksBetweenWhatTheyDefine) {
  std::size_t links = 0;
  for (std::uint32_t seed = 0; seed < 200; ++seed) {
    Random random(seed);
    std::vector<RandomSection> sections = RandomScript(random);
    SourceFiles files = RandomLayout(random, sections);
    Damage(random, files[random.Below(files.size())].second);
    std::optional<Relations> relations;
    try {
      relations = rux::browse::ReadRelations(Write(files), {});
    } catch (const rux::support::Failure&) {  // binary data is refused
      continue;
    }
    for (std::size_t i = 0; i < relations->things().size(); ++i) {
      for (const Link* link : relations->From(i)) {
        const auto& back = relations->To(link->to);
        EXPECT_NE(std::find(back.begin(), back.end(), link), back.end()) << "seed " << seed;
        ++links;
      }
    }
  }
  EXPECT_GT(links, 1000U);
}

TEST_F(Relating, TheExampleHasTheSameLinksWhateverItIsReadFrom) {
  const std::string script = RUX_EXAMPLES "/server/server.rux";
  const Ends compiled = EndsOfMachine(script);
  EXPECT_GT(compiled.size(), 500U);
  EXPECT_EQ(EndsOf(rux::browse::ReadRelations(script, {})), compiled);
}

}  // namespace
