// What compiling comes to depends on nothing but the script: messages and files are the same in
// another environment, at other addresses, in another folder and after other use of the memory.
// That goes for anything that calls itself a script, and for the library's core inside a program.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/generators/garbage.h"
#include "tests/properties/model_test.h"
#include "tests/properties/random_fault.h"
#include "tests/support/bytes.h"
#include "tests/tool/case_file.h"

namespace {

namespace fs = std::filesystem;

SourceFiles AnyScript(Random& random) {
  if (random.Chance(10)) return {{"board.rux", RandomGarbage(random)}};
  ScriptOptions options;
  options.remarkable = random.Chance(70);
  std::vector<RandomSection> sections = RandomScript(random, options);
  if (!options.remarkable) AddRandomFault(random, sections);
  SourceFiles files = RandomLayout(random, sections);
  if (random.Chance(50)) Damage(random, files[random.Below(files.size())].second);
  return files;
}

class SameOutcome : public ModelTest {
 protected:
  // A script for each seed, in both folders.
  void WriteScripts() {
    ForEachSeed(400, [&](std::uint32_t seed) {
      Random random(seed);
      scripts_.push_back({seed, AnyScript(random)});
    });
    WriteAll();
  }

  std::size_t script_count() const { return scripts_.size(); }

  void WriteAll() {
    for (std::size_t i = 0; i < scripts_.size(); ++i) {
      for (const auto& [path, contents] : scripts_[i].files) {
        for (const char* folder : {kNear, kFar}) {
          Write(folder + std::to_string(i) + '/' + path, contents);
        }
      }
    }
  }

  // Every script of the examples and of the cases of the tool, with the files around it.
  void WriteKnownScripts() {
    for (const fs::path& path : FilesBelow(RUX_EXAMPLES, ".rux")) {
      AddKnown(FilesIn(path.parent_path()), path.filename().string());
    }
    for (const fs::path& path : FilesBelow(RUX_CASES, ".txt")) {
      const CaseFile file = ReadCaseFile(path.string());
      for (const auto& [name, contents] : file.files) AddKnown(file.files, name);
    }
    WriteAll();
  }

  void CompileAll(const std::string& environment, const std::string& folder,
                  const std::string& dirt, const char* worker = RUX_COMPILE_WORKER) {
    const std::string command = "env " + environment + " " + worker + " '" + Path(folder) + "' " +
                                std::to_string(scripts_.size()) + ' ' + dirt;
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
  }

  // "" for a file that is not there.
  std::string Outcome(const std::string& name) const {
    if (!std::filesystem::exists(Path(name))) return "";
    std::string file = ReadAll(name);
    if (name.find(".meta") != std::string::npos) file.replace(20, 4, 4, '\0');
    return file;
  }

  void Compare() {
    for (std::size_t i = 0; i < scripts_.size(); ++i) {
      SCOPED_TRACE("seed " + std::to_string(scripts_[i].seed) + '\n' + TextOf(scripts_[i].files));
      for (const char* name : {"/messages", "/board.meta", "/board.metad"}) {
        const std::string file = std::to_string(i) + name;
        ExpectUnsound(kNear + file);  // of models that were refused
        ExpectUnsound(kFar + file);
        ASSERT_TRUE(SameBytes(Outcome(kFar + file), Outcome(kNear + file))) << name;
      }
    }
  }

  static constexpr char kNear[] = "near/";
  static constexpr char kFar[] = "some where else/far/";

 private:
  // As board.rux, in its turn among the parts.
  void AddKnown(const SourceFiles& files, const std::string& script) {
    if (script.size() < 4 || script.substr(script.size() - 4) != ".rux") return;
    if (known_++ % kParts != GetParam()) return;
    SourceFiles known;
    for (const auto& [name, contents] : files) {
      if (name == script) known.insert(known.begin(), {"board.rux", contents});
      if (name != "board.rux") known.emplace_back(name, contents);
    }
    scripts_.push_back({0, std::move(known)});
  }

  static std::vector<fs::path> FilesBelow(const char* folder, const char* extension) {
    std::vector<fs::path> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
      if (entry.path().extension() == extension) found.push_back(entry.path());
    }
    std::sort(found.begin(), found.end());
    return found;
  }

  static SourceFiles FilesIn(const fs::path& folder) {
    SourceFiles files;
    for (const fs::path& path : FilesBelow(folder.c_str(), ".rux")) {
      std::ifstream stream(path, std::ios::binary);
      files.emplace_back(fs::relative(path, folder).string(),
                         std::string(std::istreambuf_iterator<char>(stream), {}));
    }
    return files;
  }

  struct SeededFiles {
    std::uint32_t seed;
    SourceFiles files;
  };

  std::vector<SeededFiles> scripts_;
  std::uint32_t known_ = 0;
};

// glibc fills what it gives out with what MALLOC_PERTURB_ says.
TEST_P(SameOutcome, OfAnyScriptInAnotherProcess) {
  WriteScripts();
  CompileAll("-i", kNear, "0");
  CompileAll("MALLOC_PERTURB_=165 MALLOC_ARENA_MAX=1 TZ=Asia/Tokyo LC_ALL=C.UTF-8 PADDING=" +
                 std::string(5001, 'x'),
             kFar, "200000");
  Compare();
}

TEST_P(SameOutcome, OfAnyScriptInAProgramWithTheCoreInside) {
  WriteScripts();
  CompileAll("-i", kNear, "0");
  CompileAll("-i", kFar, "0", RUX_CORE_WORKER);
  Compare();
}

TEST_P(SameOutcome, OfKnownScriptsInAProgramWithTheCoreInside) {
  WriteKnownScripts();
  ASSERT_GT(script_count(), 40u);
  CompileAll("-i", kNear, "0");
  CompileAll("-i", kFar, "0", RUX_CORE_WORKER);
  Compare();
}

INSTANTIATE_TEST_SUITE_P(Models, SameOutcome, testing::Range(0u, kParts));

}  // namespace
