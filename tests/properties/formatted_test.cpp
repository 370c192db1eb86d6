// A formatted machine compiles to the same bytes.
#include <cstdlib>
#include <filesystem>
#include <string>

#include "format/format.h"
#include "tests/properties/model_test.h"
#include "tests/support/bytes.h"

namespace {

class Formatted : public ModelTest {
 protected:
  static constexpr char kWritten[] = "written/";
  static constexpr char kFormatted[] = "formatted/";

  // Returns how many files formatting changed.
  std::size_t WriteBoth(const std::string& folder, const SourceFiles& files) {
    std::size_t changed = 0;
    for (const auto& [path, text] : files) {
      const rux::format::Formatted formatted = rux::format::Format(text);
      EXPECT_FALSE(formatted.refusal) << formatted.refusal->reason;
      if (formatted.text != text) ++changed;
      Write(kWritten + folder + path, text);
      Write(kFormatted + folder + path, formatted.text);
    }
    return changed;
  }

  void CompileAll(const std::string& folder, std::size_t count) {
    const std::string command =
        std::string(RUX_COMPILE_WORKER) + " '" + Path(folder) + "' " + std::to_string(count) + " 0";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
  }

  std::string Meta(const std::string& folder) const {
    std::string file = ReadAll(folder + "board.meta");
    return file.replace(20, 4, 4, '\0');  // the time of creation
  }
};

TEST_P(Formatted, CompilesToTheSameBytes) {
  std::vector<SourceFiles> scripts;
  std::size_t changed = 0;
  ForEachSeed(400, [&](std::uint32_t seed) {
    Random random(seed);
    std::vector<RandomSection> sections = RandomScript(random);
    scripts.push_back(RandomLayout(random, sections));
  });
  for (std::size_t i = 0; i < scripts.size(); ++i) {
    changed += WriteBoth(std::to_string(i) + '/', scripts[i]);
  }
  EXPECT_GT(changed, scripts.size() / 2);
  CompileAll(kWritten, scripts.size());
  CompileAll(kFormatted, scripts.size());
  for (std::size_t i = 0; i < scripts.size(); ++i) {
    SCOPED_TRACE(TextOf(scripts[i]));
    const std::string folder = std::to_string(i) + '/';
    ASSERT_TRUE(SameBytes(Meta(kFormatted + folder), Meta(kWritten + folder)));
  }
}

INSTANTIATE_TEST_SUITE_P(Models, Formatted, testing::Range(0u, kParts));

}  // namespace
