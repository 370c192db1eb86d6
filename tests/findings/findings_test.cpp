// Messages as data: every message of the library is a finding for a sink, and without one a call of
// Output that says the same.
#include "findings/finding.h"
#include "query/process_state.h"
#include "tests/findings/cases.h"
#include "tests/findings/recorder.h"
#include "tests/support/host.h"
#include "tests/support/script_test.h"

namespace {

using ruxcomp::findings::MessageId;

class FindingsTest : public ScriptTest {
 protected:
  // Compiles the script; the messages go where they go.
  void Run(const std::string& script) {
    Write("board.rux", script);
    ASSERT_NE(gccCompStart(ScriptPath("board.rux")), 0u);
    gccParse();
    gccCheck();
  }

  // Runs twice, to a sink and to Output: both must say the same.
  template <class Run>
  void Compare(Run run, std::vector<std::string> expected) {
    for (std::string& line : expected) {
      const std::size_t at = line.find("FOLDER");
      if (at != std::string::npos) line.replace(at, 6, folder());
    }
    std::vector<std::string> heard;
    {
      Recorder recorder;
      run();
      EXPECT_EQ(recorder.findings, expected);
      EXPECT_EQ(host::TakeMessages(), std::vector<std::string>{});
      heard = recorder.messages;
      seen_.insert(recorder.seen.begin(), recorder.seen.end());
    }
    ruxcomp::core::ResetProcessState();
    run();
    EXPECT_EQ(host::TakeMessages(), heard);
    ruxcomp::core::ResetProcessState();
  }

  std::set<MessageId> seen_;
};

bool IsOfTheReader(MessageId id) {
  return id >= MessageId::kTextBeforeSection && id <= MessageId::kOutOfMemory;
}

TEST_F(FindingsTest, EveryMessageIsAFinding) {
  ExpectUnsound("board.metad");
  for (const ScriptCase& row : ScriptCases()) {
    SCOPED_TRACE(row.script);
    Compare([&] { Run(row.script); }, row.findings);
  }
  for (const ModelCase& row : ModelCases()) {
    SCOPED_TRACE(row.name);
    Compare([&] { row.run(folder()); }, row.findings);
  }
#define MESSAGE(name, ...)                                              \
  if (!IsOfTheReader(MessageId::k##name)) {                             \
    EXPECT_EQ(seen_.count(MessageId::k##name), 1u) << #name " is left"; \
  }
#include "findings/messages.def"
}

// The other texts are in tests/api and tests/unit.
TEST_F(FindingsTest, TextsThatNoScriptBringsAbout) {
  const auto texts_of = [this](const std::string& name) {
    for (const ModelCase& row : ModelCases()) {
      if (row.name == name) row.run(folder());
    }
    ruxcomp::core::ResetProcessState();
    return host::TakeMessages();
  };
  EXPECT_EQ(texts_of("another payload type"),
            Lines{"Error[board.rux:8]: [GLOBAL]:G_A, Entry value type is invalid.\n"});
  EXPECT_EQ(texts_of("unknown section type"),
            Lines{"Error[board.rux:7]: [PROPERTY], section type is invalid.\n"});
}

TEST_F(FindingsTest, EndOfAScriptNamesTheScript) {
  struct Ends : ruxcomp::findings::Sink {
    void Take(const ruxcomp::findings::Finding& finding) override {
      lines.push_back(FindingText(finding));
    }
    std::vector<std::string> lines;
  } ends;
  Write("x.rux", "[PROPERTY]\nA = 1\n[PROPERTY]\nB = 1\n");
  ruxcomp::findings::SetSink(&ends);
  Run("[INCLUDE]\nFILE = x.rux\nFILE = none.rux\nFILE = x.rux\n");
  ruxcomp::findings::SetSink(nullptr);
  EXPECT_EQ(ends.lines[0], "EndOfScript(2) at 1");
  EXPECT_EQ(ends.lines[1],
            "MissingInclude(board.rux, 3, INCLUDE, FILE, none.rux) in board.rux:3 at 0/0/1/0");
  EXPECT_EQ(ends.lines[2], "EndOfScript(2) at 2");
  EXPECT_EQ(ends.lines[3], "EndOfScript(1) at 0");
}

// Scripts count from the beginning of the run, and only those that were opened.
TEST_F(FindingsTest, FindingsInIncludedScriptsNameTheScript) {
  Write("x.rux", "[PROPERTY]\nA = 1,2\n");
  for (int run = 0; run < 2; ++run) {
    Recorder recorder;
    Run("[PROPERTY]\nC = 1\n[INCLUDE]\nFILE = x.rux\n[PROPERTY]\nB = 1\nA = 1\n");
    EXPECT_EQ(recorder.findings,
              (std::vector<std::string>{
                  "SurplusValues(x.rux, 2, PROPERTY, A) in x.rux:2 at 1/0/0/1",
                  "RedefinedElsewhere(board.rux, 7, PROPERTY, A, x.rux, 2) in board.rux:7 at "
                  "0/2/1/key, other 1/0/0/key"}));
    gccCompEnd();
  }
}

TEST_F(FindingsTest, SetSinkAnswersTheOneBefore) {
  Recorder recorder;
  EXPECT_EQ(ruxcomp::findings::CurrentSink(), &recorder);
  EXPECT_EQ(ruxcomp::findings::SetSink(nullptr), &recorder);
  EXPECT_EQ(ruxcomp::findings::SetSink(nullptr), nullptr);
}

}  // namespace
