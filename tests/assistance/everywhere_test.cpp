// What holds at every place of examples, and for random machines.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "assistance/folding.h"
#include "assistance/outline.h"
#include "assistance/rename.h"
#include "tests/assistance/ask.h"
#include "tests/generators/garbage.h"
#include "tests/generators/random_layout.h"
#include "tests/generators/random_script.h"
#include "tests/index/machine.h"

namespace {

// Sanitizers make each take ten times as long.
#ifdef RUX_SANITIZED
constexpr std::uint32_t kSeeds = 40;
#else
constexpr std::uint32_t kSeeds = 300;
#endif

using namespace rux::assistance;
using rux::index::Index;
using rux::index::Reference;

void AskEverywhere(const std::string& text, std::uint32_t step) {
  const Machine machine(text);
  for (std::uint32_t offset = 0; offset <= text.size(); offset += step) {
    ASSERT_EQ(AskAll({machine.index(), 0, offset}), nullptr) << offset;
  }
  OutlineOf(machine.index(), 0);
  FoldsOf(machine.index(), 0);
}

TEST(EverywhereTest, AnswersAtEachPlaceOfTheExamples) {
  for (const auto& entry : std::filesystem::recursive_directory_iterator(RUX_EXAMPLES)) {
    if (entry.path().extension() != ".rux") continue;
    SCOPED_TRACE(entry.path());
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    AskEverywhere(text, 7);
    // As one types it.
    for (std::size_t size = 0; size < text.size(); size += 1 + size / 32) {
      const Machine machine(text.substr(0, size));
      ASSERT_EQ(AskAll({machine.index(), 0, static_cast<std::uint32_t>(size)}), nullptr) << size;
    }
  }
}

TEST(EverywhereTest, AnswersInWhatIsHardlyAScript) {
  for (std::uint32_t seed = 0; seed < kSeeds; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    if (random.Chance(30)) {
      AskEverywhere(RandomGarbage(random), 1);
      continue;
    }
    std::vector<RandomSection> sections = RandomScript(random);
    std::string text = RandomLayout(random, sections).front().second;
    Damage(random, text);
    AskEverywhere(text, 5);
  }
}

// What refers to what, without names: for each reference how it ends, where its definition is and
// which value that has.
std::vector<std::string> StructureOf(const Index& index) {
  std::vector<std::string> rows;
  for (const Reference& each : index.references()) {
    std::string row = std::to_string(static_cast<int>(each.resolution)) + " " +
                      std::to_string(each.item) + "." + std::to_string(each.part) + " -> " +
                      std::to_string(each.definition) + (each.hides ? " hides" : "");
    const bool is_word = each.space == rux::index::kWords && each.definition != kNone;
    if (is_word) row += " " + std::to_string(index.definitions()[each.definition].value);
    rows.push_back(row);
  }
  return rows;
}

SourceFiles Edited(SourceFiles files, const Index& index, std::vector<Edit> edits) {
  std::sort(edits.begin(), edits.end(),
            [](const Edit& a, const Edit& b) { return a.at.range.begin > b.at.range.begin; });
  for (const Edit& edit : edits) {
    const std::string& path = index.files()[edit.at.file]->path();
    for (auto& [name, text] : files) {
      if (name != path) continue;
      text.replace(edit.at.range.begin, edit.at.range.end - edit.at.range.begin, edit.text);
    }
  }
  return files;
}

// A name that may be taken, or may not fit.
std::string AnyName(Random& random, const Index& index, const std::string& now) {
  if (random.Chance(40)) {
    return std::string(index.symbols()[random.Below(index.symbols().size())].name);
  }
  if (random.Chance(50)) return now + random.Pick<std::string>({"1", "2", ",", " #", "X"});
  return random.Pick<std::string>({"G_NEW", "VALUE_99", "NEW", "-5", "0x5", "5", "ARG1", "P_NEW"});
}

TEST(EverywhereTest, ANewNameChangesNothingElse) {
  std::size_t renamed = 0;
  for (std::uint32_t seed = 0; seed < 400 && !testing::Test::HasFailure(); ++seed) {
    Random random(seed);
    std::vector<RandomSection> sections = RandomScript(random);
    const SourceFiles files = RandomLayout(random, sections);
    const Machine machine(files);
    const auto& definitions = machine.index().definitions();
    for (int attempt = 0; attempt < 10; ++attempt) {
      const auto& definition = definitions[random.Below(definitions.size())];
      const rux::assistance::Place at{machine.index(), definition.file, definition.name.begin};
      const std::string now = machine.TextAt(definition.file, definition.name);
      const std::string name = AnyName(random, machine.index(), now);
      const Renaming renaming = Rename(at, name);
      ASSERT_NE(renaming.refusal.empty(), renaming.edits.empty()) << seed;
      if (!renaming.refusal.empty()) continue;
      ++renamed;
      const SourceFiles edited = Edited(files, machine.index(), renaming.edits);
      SCOPED_TRACE("seed " + std::to_string(seed) + ": " + now + " -> " + name + "\n" +
                   TextOf(edited));
      const Machine again(edited);
      ASSERT_EQ(StructureOf(again.index()), StructureOf(machine.index()));
    }
  }
  EXPECT_GT(renamed, 300U);
}

}  // namespace
