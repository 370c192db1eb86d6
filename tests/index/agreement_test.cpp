// The library reports unknown names exactly where references of the index lead nowhere.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>

#include "index/index.h"
#include "tests/generators/random_layout.h"
#include "tests/generators/random_order.h"
#include "tests/generators/random_script.h"
#include "tests/index/machine.h"
#include "tests/support/temp_folder.h"

namespace {

// Sanitizers make each take ten times as long.
#ifdef RUX_SANITIZED
constexpr std::uint32_t kSeeds = 40;
#else
constexpr std::uint32_t kSeeds = 300;
#endif

using namespace rux::index;
namespace language = ruxcomp::language;

// "file:line id", sorted.
using Rows = std::vector<std::string>;

std::string NameOf(const std::string& path) {
  return std::filesystem::path(path).filename().string();
}

// The id of what is reported about a reference that leads nowhere.
std::string IdOf(const Index& index, const Reference& reference) {
  const Space& space = reference.space;
  if (space == kWords) {
    const ItemRecord& item = index.items()[reference.item];
    const std::uint32_t payload = language::PayloadOf(item.entry);
    if (item.entry == language::ENTRY_DEFINEWORD) {
      // By itself, the condition is reported whatever it names.
      return index.ItemsOf(item.section).size() == 1 ? "empty-ifdef" : "false-ifdef";
    }
    if (payload == language::PAYLOAD_DWORD) return "define-unknown-word";
    const bool is_type = payload == language::PAYLOAD_VALUE && reference.part == 0;
    return is_type ? "unknown-value-type" : "undefined-word";
  }
  if (space == kFiles) return "missing-include";
  if (space == kArguments) return "invalid-argument";
  switch (space.entry) {
    case language::ENTRY_G:
      return "unknown-global";
    case language::ENTRY_VALUE_OF_ACTION:
      return "unknown-value";
    case language::ENTRY_SENSORS:
      return "unlisted-sensor";
    case language::ENTRY_ID:
      return space.section == language::SECTION_SENSOR ? "unknown-sensor"
                                                       : "unknown-parent-pelmgroup";
    default:
      break;
  }
  switch (space.section) {
    case language::SECTION_GROUP:
      return "unknown-parent-group";
    case language::SECTION_ACTION:
      return "unknown-action";
    default:
      return "unknown-table";
  }
}

const std::set<std::string> kWhileReading = {"false-ifdef", "define-unknown-word",
                                             "missing-include"};
const std::set<std::string> kFirstPass = {"unknown-value-type"};
const std::set<std::string> kSecondPass = {
    "undefined-word",       "unknown-global",          "unknown-value",  "invalid-argument",
    "unlisted-sensor",      "unknown-sensor",          "unknown-action", "unknown-table",
    "unknown-parent-group", "unknown-parent-pelmgroup"};
// Further errors of the second pass.
const std::set<std::string> kOthersOfSecondPass = {
    "argument-count", "redefined-entry",   "redefined-elsewhere", "redefined-name",
    "redefined-id",   "redefined-section", "parent-defined-later"};

std::string IdIn(const std::string& row) { return row.substr(row.find(' ') + 1); }

bool HasId(const Rows& rows, const std::string& id) {
  return std::any_of(rows.begin(), rows.end(),
                     [&](const std::string& row) { return IdIn(row) == id; });
}

void Drop(const std::string& id, Rows& rows) {
  rows.erase(std::remove_if(rows.begin(), rows.end(),
                            [&](const std::string& row) { return IdIn(row) == id; }),
             rows.end());
}

class Agreement : public testing::Test {
 protected:
  void Write(const SourceFiles& files) {
    for (const auto& [path, text] : files) folder_.Write(path, text);
  }

  nlohmann::json Check(const std::string& script) const {
    const std::string command = "cd " + folder_.path() +
                                " && " RUX_TOOL
                                " check --no-project --as-main --format json --all --max-errors 0 "
                                "--max-warnings 0 -W all " +
                                script + " > out.json 2> err";
    [[maybe_unused]] const int status = std::system(command.c_str());
    return nlohmann::json::parse(folder_.Read("out.json"));
  }

  // Compares what the tool reports with the index of the same files.
  void ExpectAgreement(const SourceFiles& files) {
    Write(files);
    const nlohmann::json report = Check(files.front().first);
    bool has_second_pass = true;
    Rows reported;
    for (const nlohmann::json& each : report["diagnostics"]) {
      const std::string id = each["id"];
      if (id == "unreadable-number") return;  // the library stops there
      const bool is_of_second = kSecondPass.count(id) + kOthersOfSecondPass.count(id) > 0;
      const bool is_error = each["severity"] == "error";
      if (is_error && !is_of_second && kWhileReading.count(id) == 0) has_second_pass = false;
      if (kSecondPass.count(id) + kFirstPass.count(id) + kWhileReading.count(id) == 0) continue;
      reported.push_back(NameOf(each["location"]["file"]) + ":" +
                         std::to_string(each["location"]["line"].get<int>()) + " " + id);
    }
    // A word that is neither is reported by the first pass, where it is not in a value.
    const Machine machine(files);
    Rows missing;
    for (const Reference& reference : machine.index().references()) {
      if (reference.resolution != Resolution::kMissing) continue;
      const std::string id = IdOf(machine.index(), reference);
      if (id == "empty-ifdef") continue;
      const bool is_of_first = id == "undefined-word" && reference.role == language::Role::kNone;
      if (is_of_first) has_second_pass = false;
      const auto* file = machine.index().files()[reference.file];
      missing.push_back(NameOf(file->path()) + ":" +
                        std::to_string(file->LineAt(reference.name.begin)) + " " + id);
    }
    if (!has_second_pass) {
      for (const std::string& id : kSecondPass) {
        Drop(id, reported);
        Drop(id, missing);
      }
    }
    if (HasId(reported, "unknown-sensor")) {
      // A sensor that lacks a list because its ID is mistyped there is not reported.
      Drop("unlisted-sensor", reported);
      Drop("unlisted-sensor", missing);
    }
    std::sort(reported.begin(), reported.end());
    std::sort(missing.begin(), missing.end());
    EXPECT_EQ(missing, reported);
    found_ += missing.size();
  }

  std::size_t found_ = 0;
  TempFolder folder_;
};

// Puts a name that hardly fits in the place of some part.
void Misname(Random& random, std::vector<RandomSection>& sections) {
  static const std::vector<std::string> kNames = {"G_NO", "VALUE_77", "ARG9", "nope", "0x777",
                                                  "7",    "ARG1",     "ARG0", "ARGx", "-5"};
  for (int attempt = 0; attempt < 20; ++attempt) {
    RandomSection& section = sections[random.Below(sections.size())];
    if (section.items.empty()) continue;
    RandomItem& item = section.items[random.Below(section.items.size())];
    if (item.parts.empty()) continue;
    item.parts[random.Below(item.parts.size())] = random.Pick(kNames);
    return;
  }
}

TEST_F(Agreement, EveryReferenceOfAnAcceptedScriptLeadsSomewhere) {
  for (std::uint32_t seed = 0; seed < 150 && !HasFailure(); ++seed) {
    Random random(seed);
    std::vector<RandomSection> sections = RandomScript(random);
    if (random.Chance(50)) ShuffleSections(random, sections);
    const SourceFiles files = RandomLayout(random, sections);
    SCOPED_TRACE("seed " + std::to_string(seed) + '\n' + TextOf(files));
    const Machine machine(files);
    for (const Reference& reference : machine.index().references()) {
      if (reference.resolution != Resolution::kMissing) continue;
      // The library says nothing of these.
      const std::string id = IdOf(machine.index(), reference);
      EXPECT_THAT(id, testing::AnyOf("empty-ifdef", "false-ifdef", "define-unknown-word"));
    }
  }
}

TEST_F(Agreement, UnknownNamesAreReportedWhereReferencesLeadNowhere) {
  for (std::uint32_t seed = 0; seed < kSeeds && !HasFailure(); ++seed) {
    Random random(seed);
    std::vector<RandomSection> sections = RandomScript(random, {false, true});
    if (random.Chance(50)) ShuffleSections(random, sections);
    for (std::uint32_t i = random.Between(0, 3); i > 0; --i) Misname(random, sections);
    const SourceFiles files = RandomLayout(random, sections);
    SCOPED_TRACE("seed " + std::to_string(seed) + '\n' + TextOf(files));
    ExpectAgreement(files);
  }
  EXPECT_GT(found_, 100U);
}

// Every prefix of the examples, and each without a stretch, has an index.
TEST_F(Agreement, PrefixesOfTheExamplesAreIndexed) {
  for (const auto& entry : std::filesystem::recursive_directory_iterator(RUX_EXAMPLES)) {
    if (entry.path().extension() != ".rux") continue;
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    for (std::size_t size = 0; size <= text.size(); size += 1 + size / 64) {
      const Machine prefix(text.substr(0, size));
      for (const Reference& reference : prefix.index().references()) {
        ASSERT_LE(reference.name.end, size);
        ASSERT_LE(reference.name.begin, reference.name.end);
      }
      const Machine gap(text.substr(0, size / 2) + text.substr(size));
      ASSERT_EQ(gap.index().files().size(), 1U);
    }
  }
}

}  // namespace
