// Nothing is left behind by a compile run or a load, however it ends: no memory, no open file.
#include <filesystem>
#include <functional>
#include <stdexcept>

#include "tests/damage/loads.h"
#include "tests/damage/samples.h"
#include "tests/damage/usage.h"
#include "tests/support/host.h"
#include "tests/support/script_test.h"

namespace {

#ifdef RUX_SANITIZED
constexpr int kRounds = 20;  // the sanitizer sees what one round loses
#else
constexpr int kRounds = 1000;
#endif

// What the heap may seem to grow by chance; a leak of one object per round is more.
constexpr std::size_t kHeapNoise = 8 * 1024;
constexpr std::size_t kPageNoise = 64;

constexpr char kSound[] =
    "[DEFINE]\nT1 = 1\n[MORVRUX]\nVERSION = 1.0\n[PROPERTY]\nA = x\n"
    "[GROUP]\nPARENT = 0\nNAME = g\nCHILDGROUP = 0\n"
    "[PELMGROUP]\nNAME = p\nID = 1\nPID = 0\nSENSORS = 7\n"
    "[SENSOR]\nPARENT = g\nNAME = s\nID = 7\nTYPE = 1\nINITFLAG = 0\nCONTROLMASK = 0\n"
    "VALUE = T1,G_1\n[GLOBAL]\nG_1 = T1,5\n[INCLUDE]\nFILE = more.rux\n";
constexpr char kIncluded[] = "[ACTION]\nNAME = go\n[REPEATER]\nR = 5,go\n";

enum class Raises { kNowhere, kInParse, kInCheck, kInOutput };

class LeaksTest : public ScriptTest {
 protected:
  void SetUp() override {
    ScriptTest::SetUp();
    Write("more.rux", kIncluded);
  }

  // Many rounds take no more than the first ones.
  void ExpectNoGrowth(const std::function<void()>& round) {
    for (int i = 0; i < 20; ++i) Round(round);
    const Usage before = CurrentUsage();
    for (int i = 0; i < kRounds && !HasFailure(); ++i) Round(round);
    const Usage after = CurrentUsage();
    EXPECT_EQ(after.files, before.files);
    EXPECT_LE(after.heap, before.heap + kHeapNoise);
    EXPECT_LE(after.pages, before.pages + kPageNoise);
    EXPECT_FALSE(FoundLeaks());
  }

  // A run over "board.rux" that a host drives to its end whatever is answered, and that raises an
  // error in one of its steps.
  void RunAndReportFailures(Raises raises = Raises::kNowhere) {
    EXPECT_NE(gccCompStart(ScriptPath("board.rux")), 0u);
    const bool parse_raised = Raised([] { gccParse(); });
    EXPECT_EQ(parse_raised, raises == Raises::kInParse);
    if (!parse_raised) {
      EXPECT_EQ(Raised([] { gccCheck(); }), raises == Raises::kInCheck);
      const bool output_raised = Raised([&] { gccOutput(Path("board.meta")); });
      EXPECT_TRUE(raises == Raises::kInCheck || output_raised == (raises == Raises::kInOutput));
    }
    gccOutputD(Path("board.metad"));
    gccCompEnd();
    // Some file systems take their time to write a file over.
    for (const char* name : {"board.meta", "board.metad"}) std::filesystem::remove(Path(name));
  }

 private:
  static void Round(const std::function<void()>& round) {
    round();
    host::TakeMessages();
  }

  static bool Raised(const std::function<void()>& step) {
    try {
      step();
    } catch (const std::out_of_range&) {
      return true;
    }
    return false;
  }
};

TEST_F(LeaksTest, SoundScript) {
  Write("board.rux", kSound);
  ExpectNoGrowth([&] { RunAndReportFailures(); });
}

TEST_F(LeaksTest, ScriptsThatTheCheckRefuses) {
  const std::string sound = kSound;
  for (const char* findings :
       {"[DEVICE]\nNAME = d\n[TABLE]\n256 = 1\n[GLOBAL]\nG_2 = T2\n",           // first pass
        "[GLOBAL]\nG_1 = T1,G_9\n[REPEATER]\nS = 1,gone\n",                     // second pass
        "[UNKNOWN]\nA = 1\n[MORVRUX]\nB = 1\n[INCLUDE]\nFILE = gone.rux\n"}) {  // reading
    SCOPED_TRACE(findings);
    Write("board.rux", sound + findings);
    ExpectNoGrowth([&] { RunAndReportFailures(); });
  }
}

// Texts that have no character to look at where a number is read.
TEST_F(LeaksTest, ScriptsThatRaiseErrors) {
  Write("raises.rux", "[PROPERTY]\nB = y\n[DEFINE]\nX = \"\"\n");
  const struct {
    Raises raises;
    const char* end;
  } rows[] = {
      {Raises::kInParse, "[DEFINE]\nX = \"\"\n"},
      {Raises::kInParse, "[DEFINE]\nX = 0x\n"},
      {Raises::kInParse, "[INCLUDE]\nFILE = raises.rux\n"},
      {Raises::kInCheck, "[DEVICE]\nNAME = d\nID = 0x\nINITFLAG = 0\nCONTROLMASK = 0\n"},
      {Raises::kInCheck, "[TABLE]\nNAME = t\nTYPE = 1\n. = 1\n"},
      {Raises::kInCheck, "[GLOBAL]\nG_2 = T1,\"\"\n"},
      {Raises::kInCheck, "[REPEATER]\nS = \"\",go\n"},
      {Raises::kInOutput, "[GLOBAL]\nG_2 = T1\n"},
      {Raises::kInOutput, "[SYSTEM]\nX = 1\n"},
      {Raises::kInOutput, "[MORVRUX]\nVERSION = 2\n[GLOBAL]\nG = T1,1\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.end);
    Write("board.rux", std::string(kSound) + row.end);
    ExpectNoGrowth([&] { RunAndReportFailures(row.raises); });
  }
}

TEST_F(LeaksTest, FilesThatCannotBeOpened) {
  Write("board.rux", kSound);
  ExpectNoGrowth([&] {
    for (const char* path : {"gone.rux", ""}) EXPECT_EQ(gccCompStart(ScriptPath(path)), 0u);
    EXPECT_NE(gccCompStart(ScriptPath("board.rux")), 0u);
    gccParse();
    EXPECT_EQ(gccCheck(), 1u);
    for (const std::string& path : {Path("no/board.meta"), folder(), std::string("/dev/full")}) {
      EXPECT_EQ(gccOutput(path), 0u);
      gccOutputD(path);
    }
    gccCompEnd();
    for (const std::string& path : {Path("gone.meta"), folder(), std::string("/dev/null")}) {
      EXPECT_EQ(gcInit(path), 0u);
      EXPECT_EQ(gdInit(path), 0u);
    }
  });
}

TEST_F(LeaksTest, Loads) {
  const std::string meta = MetaSample();
  const std::string debug_meta = DebugMetaSample();
  for (const std::size_t length :
       {meta.size(), meta.size() - 40, std::size_t{700}, std::size_t{9}}) {
    SCOPED_TRACE(length);
    Write("cut.meta", meta.substr(0, length));
    ExpectNoGrowth([&] { LoadFile(Form::kMeta, Path("cut.meta")); });
  }
  for (const std::size_t length :
       {debug_meta.size(), debug_meta.size() - 1, std::size_t{1000}, std::size_t{9}}) {
    SCOPED_TRACE(length);
    Write("cut.metad", debug_meta.substr(0, length));
    ExpectNoGrowth([&] { LoadFile(Form::kDebugMeta, Path("cut.metad")); });
  }
}

// Hosts that do not release what they loaded lose it, as query.h says.
TEST_F(LeaksTest, LoadOverALoadLosesTheSectionsOfTheFirst) {
  Write("sample.meta", MetaSample());
  const LeaksAllowed allowed;
  const std::size_t before = CurrentUsage().heap;
  for (int i = 0; i < kRounds; ++i) EXPECT_EQ(gcInit(Path("sample.meta")), 1u);
  gcUnInit();
#ifndef RUX_SANITIZED
  EXPECT_GT(CurrentUsage().heap, before + kRounds * sizeof(tagGCSECT));
#else
  static_cast<void>(before);
#endif
}

}  // namespace
