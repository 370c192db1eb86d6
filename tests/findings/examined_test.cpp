// Where a number was examined that raised an error.
#include <stdexcept>

#include "findings/origin.h"
#include "tests/findings/recorder.h"
#include "tests/support/host.h"
#include "tests/support/script_test.h"

namespace {

enum Phase { kParse, kCheck, kOutput };

struct Row {
  const char* script;
  Phase phase;
  const char* examined;  // as OriginText
};

constexpr char kSensor[] =
    "[DEFINE]\nVT = 1\n[SENSOR]\nPARENT = G\nNAME = S\nID = 9\nTYPE = 1\nINITFLAG = 0\n"
    "CONTROLMASK = 0\nVALUE = VT, 1\n"
    "[GROUP]\nPARENT = 0\nNAME = G\nCHILDGROUP = 0\n"
    "[PELMGROUP]\nNAME = P\nID = 1\nPID = 0\nSENSORS = 1,,9\n";

const Row kRows[] = {
    {"[PROPERTY]\nA = 1\n[DEFINE]\nA = 1\nB = 0x\n", kParse, "0/1/1/0"},
    {"[IFDEF]\nDEFINEWORD = A\nB = 0x\n", kParse, "0/0/1/0"},
    {"[DEVICE]\nNAME = D\nID = 0x\n", kCheck, "0/0/1/0"},
    {"[TABLE]\nNAME = T\nTYPE = 1\n1 = 1\n.5 = 1\n", kCheck, "0/0/3/key"},
    {"[ACTION]\nNAME = A\nVALUE_0x = VT, 1\n", kCheck, "0/0/1/key"},
    {"[DEFINE]\nVT = 4\n[GLOBAL]\nG_A = VT, 1, 2, BUSTYPE_SIMPLEIOPORT, 0x\n", kCheck, "0/1/0/4"},
    {"[DEFINE]\nVT = 7\n[GLOBAL]\nG_A = VT, 1\nG_B = VT, 1, 2, 0x\n", kCheck, "0/1/1/3"},
    {"[DEFINE]\nVT = 7\n[GLOBAL]\nG_A = VT, 1, ARG0x\n", kCheck, "0/1/0/2"},
    {"[DEFINE]\nVT = 4\n[GLOBAL]\nG_A = VT, 1, 0x, 3, 4\n", kCheck, "0/1/0/2"},
    {"[PELMGROUP]\nNAME = P\nID = 1\nPID = 0\nSENSORS = 0x\n", kCheck, "0/0/3/0"},
    // The list is searched for the ID of the sensor: the element is what raises.
    {kSensor, kCheck, "0/3/3/1"},
    {"[REPEATER]\nR = 0x, A\n", kCheck, "0/0/0/0"},
    {"[REPEATER]\nR = 1, A, 2, 0x\n", kCheck, "0/0/0/3"},
    {"[TABLE]\nNAME = T\nTYPE = 1\n5 = 0x\n", kOutput, "0/0/2/0"},
    {"[ACTION]\nNAME = A\nARGNUMBER = 2\n[REPEATER]\nR = 1, A, 2, ARG0x\n", kOutput, "0/1/0/3"},
};

using ExaminedTest = ScriptTest;

TEST_F(ExaminedTest, IsWhatRaised) {
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.script);
    Write("board.rux", row.script);
    ASSERT_NE(gccCompStart(ScriptPath("board.rux")), 0u);
    Phase phase = kParse;
    try {
      gccParse();
      phase = kCheck;
      gccCheck();
      phase = kOutput;
      gccOutput(Path("board.meta"));
      ADD_FAILURE() << "nothing was raised";
    } catch (const std::out_of_range& error) {
      EXPECT_EQ(std::string(error.what()).rfind("basic_string::", 0), 0u) << error.what();
    }
    EXPECT_EQ(phase, row.phase);
    EXPECT_EQ(OriginText(ruxcomp::findings::Examined()), row.examined);
    gccCompEnd();
  }
}

TEST_F(ExaminedTest, NamesTheIncludedScript) {
  Write("x.rux", "[PROPERTY]\nA = 1\n[DEFINE]\nA = 0x\n");
  Write("board.rux", "[INCLUDE]\nFILE = x.rux\n");
  ASSERT_NE(gccCompStart(ScriptPath("board.rux")), 0u);
  EXPECT_THROW(gccParse(), std::out_of_range);
  EXPECT_EQ(OriginText(ruxcomp::findings::Examined()), "1/1/0/0");
}

}  // namespace
