// Scripts with known slips, fixed: they check at least as well, nothing is left to fix, and what
// could be compiled compiles to the same bytes.
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/properties/model_test.h"
#include "tests/support/bytes.h"

namespace {

// What a slip does to the script.
enum class Harm { kNone, kError };

// A line of a file that no line is joined to and that joins none.
struct Line {
  std::size_t begin;
  std::size_t end;  // before the line end
};

class Fixed : public ModelTest {
 protected:
  // Lines that begin with a capital or a bracket: items and headers of most layouts.
  static std::vector<Line> LinesOf(const std::string& text, char first_from, char first_to) {
    std::vector<Line> lines;
    bool is_joined = false;
    for (std::size_t begin = 0; begin < text.size();) {
      const std::size_t feed = text.find('\n', begin);
      if (feed == std::string::npos) break;
      std::size_t end = feed;
      if (end > begin && text[end - 1] == '\r') --end;
      const bool joins = end > begin && text[end - 1] == '\\';
      const char first = text[begin];
      if (!is_joined && !joins && first >= first_from && first <= first_to)
        lines.push_back({begin, end});
      is_joined = joins;
      begin = feed + 1;
    }
    return lines;
  }

  // A slip that leaves what is compiled as it is; false when the text has no place for it.
  static bool AddBlanks(Random& random, std::string& text) {
    const std::vector<Line> lines = LinesOf(text, '#', 'Z');
    if (lines.empty()) return false;
    const Line& line = lines[random.Below(lines.size())];
    text.insert(line.end, random.Below(2) == 0 ? " " : "\t  ");
    return true;
  }
  static bool AddComment(Random& random, std::string& text) {
    const std::vector<Line> lines = LinesOf(text, 'A', 'Z');
    if (lines.empty()) return false;
    const Line& line = lines[random.Below(lines.size())];
    if (text.substr(line.begin, line.end - line.begin).find_first_of("\"#;\\") != std::string::npos)
      return false;
    text.insert(line.end, " # rux: allow long-line,id-word  both");
    return true;
  }
  static bool DropLineEnd(Random&, std::string& text) {
    if (text.size() < 2 || text.back() != '\n' || text[text.size() - 2] == '\\') return false;
    text.pop_back();
    if (text.back() == '\r') text.pop_back();
    return text.back() != '\n' && text.back() != '\\';
  }

  // Slips that are errors.
  static bool OpenHeader(Random& random, std::string& text) {
    const std::vector<Line> lines = LinesOf(text, '[', '[');
    if (lines.empty()) return false;
    const Line& line = lines[random.Below(lines.size())];
    if (text[line.end - 1] != ']') return false;
    text.erase(line.end - 1, 1);
    return true;
  }
  static bool SwapCharacters(Random& random, std::string& text) {
    constexpr std::string_view kKeys[] = {"PARENT", "CONTROLMASK", "INITFLAG", "SENSORS"};
    const std::string_view key = kKeys[random.Below(std::size(kKeys))];
    std::size_t at = text.find(std::string(key) + ' ');
    if (at == std::string::npos) at = text.find(std::string(key) + '=');
    if (at == std::string::npos || (at > 0 && text[at - 1] != '\n')) return false;
    const std::size_t swapped = at + 1 + random.Below(key.size() - 2);
    if (text[swapped] == text[swapped + 1]) return false;
    std::swap(text[swapped], text[swapped + 1]);
    return true;
  }

  using Slip = bool (*)(Random& random, std::string& text);

  static bool AddSlip(Random& random, Harm harm, SourceFiles& files) {
    constexpr Slip kHarmless[] = {AddBlanks, AddComment, DropLineEnd};
    constexpr Slip kErrors[] = {OpenHeader, SwapCharacters};
    std::string& text = files[random.Below(files.size())].second;
    const std::string before = text;
    const bool is_done = harm == Harm::kNone
                             ? kHarmless[random.Below(std::size(kHarmless))](random, text)
                             : kErrors[random.Below(std::size(kErrors))](random, text);
    if (!is_done) text = before;
    return is_done;
  }

  int Run(const std::string& command) {
    const int status = std::system(("cd '" + Path("") + "' && " + command).c_str());
    return WEXITSTATUS(status);
  }
  static std::string Rux() { return "'" RUX_PROGRAM "' "; }

  std::string MetaOf(const std::string& script) {
    Run("rm -f out.meta; SOURCE_DATE_EPOCH=1 " + Rux() + "compile -W none --no-project '" + script +
        "' -o out.meta 2>/dev/null");
    return std::filesystem::exists(Path("out.meta")) ? ReadAll("out.meta") : "";
  }
  std::size_t ErrorsIn(const std::string& script) {
    Run(Rux() + "check --all --no-project --format gcc '" + script + "' > errors 2>/dev/null");
    const std::string text = ReadAll("errors");
    std::size_t count = 0;
    for (std::size_t at = text.find(": error: "); at != std::string::npos;
         at = text.find(": error: ", at + 1)) {
      ++count;
    }
    return count;
  }

  std::size_t mended_ = 0;
  std::size_t slips_ = 0;
};

TEST_P(Fixed, ChecksAtLeastAsWell) {
  ForEachSeed(120, [&](std::uint32_t seed) {
    Random random(seed);
    std::vector<RandomSection> sections = RandomScript(random);
    SourceFiles files = RandomLayout(random, sections);
    for (const auto& [path, text] : files) Write("meant/" + path, text);
    const Harm harm = random.Below(2) == 0 ? Harm::kNone : Harm::kError;
    std::size_t slips = 0;
    for (int i = 0; i < 4; ++i) slips += AddSlip(random, harm, files) ? 1 : 0;
    for (const auto& [path, text] : files) Write("slips/" + path, text);
    SCOPED_TRACE(TextOf(files));
    const std::string meant = MetaOf("meant/" + files.front().first);
    const std::string script = "slips/" + files.front().first;
    const std::string before = MetaOf(script);
    const std::size_t errors = ErrorsIn(script);

    const int status = Run(Rux() + "fix --no-project '" + script + "' > fixes 2> summary");
    ASSERT_LE(status, 1) << ReadAll("summary");
    const std::string after = MetaOf(script);
    EXPECT_LE(ErrorsIn(script), errors);
    if (!before.empty()) {
      EXPECT_TRUE(SameBytes(after, before)) << ReadAll("fixes");
    }
    if (slips > 0) ++slips_;
    if (slips > 0 && !after.empty() && after == meant) ++mended_;

    if (status == 0) {
      EXPECT_EQ(Run(Rux() + "fix --dry-run --no-project '" + script + "' > again 2>&1"), 0);
      EXPECT_EQ(ReadAll("again").substr(0, 7), "0 fixes");
    }
  });
  // Of few, as many as there happen to be.
  if (slips_ >= 10) {
    EXPECT_GT(mended_, slips_ / 2);
  }
}

INSTANTIATE_TEST_SUITE_P(Models, Fixed, testing::Range(0u, kParts));

}  // namespace
