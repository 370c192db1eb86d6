// Two compile runs in one process: what the second one comes to follows from what each comes to
// alone.
//
// What outlives a run: the symbol tables (a load replaces them), the order of the kinds, the list
// of source files, and that a debug meta file was written. What does not: sections, defined words
// and the cells of tables.
#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "compiled/debug_meta.h"
#include "tests/properties/merged_meta.h"
#include "tests/properties/model_test.h"
#include "tests/support/bytes.h"

namespace {

// How the first run ends.
enum class End { kWritten, kChecked, kRefused, kRaised };

struct Plan {
  End end;
  bool same_script;   // both runs read the same files
  bool loads;         // another meta file is loaded between the runs
  bool writes_debug;  // the first run writes a debug meta file
};

// What a run came to in a process of its own.
struct Alone {
  rux::compiled::CompiledMeta meta;  // empty when the run did not write it
  rux::compiled::DebugMeta debug_meta;
  std::string messages;
};

std::string Joined(Lines lines) {
  std::string text;
  for (const std::string& line : lines) text += line;
  return text;
}

// The check goes kind by kind, in an order that the runs before have settled.
std::string Sorted(Lines lines) {
  std::sort(lines.begin(), lines.end());
  return Joined(lines);
}

std::vector<std::uint32_t> KindsOf(const rux::compiled::DebugMeta& meta) {
  std::vector<std::uint32_t> kinds;
  for (const auto& kind : meta.kinds) kinds.push_back(kind.front().identifier);
  return kinds;
}

// Kinds in the order in which they first came up.
std::vector<std::uint32_t> KindsAfter(const Alone& first, const Alone& second) {
  std::vector<std::uint32_t> kinds = KindsOf(first.debug_meta);
  for (const std::uint32_t kind : KindsOf(second.debug_meta)) {
    if (std::count(kinds.begin(), kinds.end(), kind) == 0) kinds.push_back(kind);
  }
  return kinds;
}

// The records of a debug meta file as lines; file indices counted from `first_file`. A template
// that was not given has no file.
std::string RecordOf(const rux::compiled::DebugObject& object, std::size_t first_file) {
  const std::size_t file = object.file_index + (object.name.empty() ? 0 : first_file);
  return std::to_string(object.identifier) + ' ' + std::to_string(object.notation) + ' ' +
         std::to_string(object.line) + ' ' + std::to_string(file) + ' ' + object.name + '\n';
}
std::string RecordsOf(const rux::compiled::DebugMeta& meta, const std::vector<std::uint32_t>& kinds,
                      std::size_t first_file) {
  std::string records;
  for (const rux::compiled::DebugWord& word : meta.words) {
    records += word.name + '=' + std::to_string(word.value) + '\n';
  }
  for (const std::uint32_t identifier : kinds) {
    for (const auto& kind : meta.kinds) {
      if (kind.empty() || kind.front().identifier != identifier) continue;
      for (const rux::compiled::DebugSection& section : kind) {
        records += RecordOf(section, first_file);
        for (const rux::compiled::DebugEntry& entry : section.entries) {
          records += ' ' + RecordOf(entry, first_file);
          for (const rux::compiled::DebugField& field : entry.fields) {
            for (const std::string& text : field.texts) records += "  " + text + '\n';
          }
        }
      }
    }
  }
  return records;
}

class TwoRuns : public ModelTest {
 protected:
  rux::compiled::CompiledMeta DecodedMeta(const std::string& name) const {
    if (!std::ifstream(Path(name))) return {};
    rux::compiled::Faults faults;
    rux::compiled::CompiledMeta meta = rux::compiled::DecodeMeta(ReadAll(name), faults);
    EXPECT_TRUE(faults.empty()) << rux::compiled::FaultText(faults.list().front());
    return meta;
  }
  rux::compiled::DebugMeta DecodedDebugMeta(const std::string& name) const {
    rux::compiled::Faults faults;
    rux::compiled::DebugMeta meta = rux::compiled::DecodeDebugMeta(ReadAll(name), faults);
    EXPECT_TRUE(faults.empty()) << rux::compiled::FaultText(faults.list().front());
    return meta;
  }

  // A run, up to its end, which is not called.
  Lines Run(const std::string& folder, End end, const std::string& meta) {
    host::TakeMessages();
    EXPECT_NE(gccCompStart(ScriptPath(folder + "\\board.rux")), 0u);
    try {
      gccParse();
    } catch (const std::out_of_range&) {
      EXPECT_EQ(end, End::kRaised);
      return {};
    }
    EXPECT_NE(end, End::kRaised);
    EXPECT_EQ(gccCheck(), end == End::kRefused ? 0u : 1u);
    EXPECT_TRUE(end != End::kWritten || gccOutput(Path(meta)));
    return host::TakeMessages();
  }

  // In a process of its own, which writes "NAME.meta" and "NAME.metad".
  Alone RunAlone(const std::string& folder, End end, const std::string& name) {
    std::remove(Path(name + ".meta").c_str());
    InOwnProcess([&] {
      Write("alone.messages", Sorted(Run(folder, end, name + ".meta")));
      EXPECT_EQ(gccOutputD(Path(name + ".metad")), 1u);
    });
    return {DecodedMeta(name + ".meta"), DecodedDebugMeta(name + ".metad"),
            ReadAll("alone.messages")};
  }

  void RunBoth(const Plan& plan, const std::string& second) {
    InOwnProcess([&] {
      Run("first", plan.end, "before.meta");
      EXPECT_TRUE(!plan.writes_debug || gccOutputD(Path("before.metad")));
      gccCompEnd();
      if (plan.loads) {
        EXPECT_EQ(gcInit(Path("loaded.meta")), 1u);
        gcUnInit();
      }
      Write("both.messages", Sorted(Run(second, End::kWritten, "both.meta")));
      EXPECT_EQ(gccOutputD(Path("both.metad")), 1u);
    });
  }
};

// Makes the check refuse the script, or reading it raise an error, at its very end.
void Spoil(End end, std::vector<RandomSection>& sections) {
  if (end == End::kRefused) sections.push_back({"DEVICE", {}});
  if (end == End::kRaised) sections.push_back({"DEFINE", {{"X", {""}}}});
}

TEST_P(TwoRuns, SecondOneIsWhatBothAreAlone) {
  ForEachSeed(200, [&](std::uint32_t seed) {
    Random random(seed);
    const std::vector<End> ends = {End::kWritten, End::kWritten, End::kWritten,
                                   End::kChecked, End::kRefused, End::kRaised};
    const Plan plan = {random.Pick(ends), random.Chance(20), random.Chance(30), random.Chance(50)};
    const bool same = plan.same_script && plan.end <= End::kChecked;
    const std::string second_folder = same ? "first" : "second";
    std::string texts;
    ScriptOptions options;
    options.pelm_properties = false;
    for (const char* folder : {"first", "second", "third"}) {
      std::vector<RandomSection> sections = RandomScript(random, options);
      if (folder == std::string("first")) Spoil(plan.end, sections);
      texts += TextOf(WriteModel(random, sections, folder + std::string("/")));
    }
    SCOPED_TRACE("seed " + std::to_string(seed) + '\n' + texts);

    // What a refused model or half a one is written to.
    if (plan.end > End::kChecked) {
      for (const char* name : {"first.metad", "before.metad"}) ExpectUnsound(name);
    }
    const Alone first = RunAlone("first", plan.end, "first");
    const Alone second = RunAlone(second_folder, End::kWritten, "second");
    const Alone loaded = RunAlone("third", End::kWritten, "loaded");
    RunBoth(plan, second_folder);

    EXPECT_EQ(ReadAll("both.messages"), second.messages);
    const std::vector<std::uint32_t> kinds = KindsAfter(first, second);
    EXPECT_TRUE(SameBytes(ReadAll("both.meta").replace(20, 4, 4, '\0'),
                          MergedMeta(plan.loads ? loaded.meta : first.meta, second.meta, kinds)));

    const rux::compiled::DebugMeta both = DecodedDebugMeta("both.metad");
    EXPECT_EQ(both.kinds.size(), kinds.size());
    const std::vector<std::string>& first_files = first.debug_meta.files;
    EXPECT_EQ(RecordsOf(both, kinds, 0),
              RecordsOf(second.debug_meta, kinds, same ? 0 : first_files.size()));
    std::vector<std::string> files = first_files;
    if (!same) {
      files.insert(files.end(), second.debug_meta.files.begin(), second.debug_meta.files.end());
    }
    if (plan.writes_debug) files.clear();
    EXPECT_EQ(both.files, files);
  });
}

INSTANTIATE_TEST_SUITE_P(Models, TwoRuns, testing::Range(0u, kParts));

}  // namespace
