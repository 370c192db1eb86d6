// How long what was loaded can be asked: to the end of the process, whatever asks.
#include <stdlib.h>

#include "tests/standins/host_process.h"
#include "tests/support/host.h"
#include "tests/support/script_test.h"

namespace {

using LifetimeTest = ScriptTest;

TEST_F(LifetimeTest, ObjectsAndFunctionsThatEndTheProcessAskTheLoadedFiles) {
  Parse(
      "[DEFINE]\nT1 = 1\n[PELMGROUP]\nNAME = ALL\nID = 1\nPID = 0\nSENSORS = 17, 18\n"
      "[GROUP]\nPARENT = 0\nNAME = BOARD\nCHILDGROUP = 0\n"
      "[SENSOR]\nPARENT = BOARD\nNAME = INLET\nID = 17\nTYPE = 1\nINITFLAG = 0\nCONTROLMASK = 0\n"
      "VALUE = T1, 5\n"
      "[SENSOR]\nPARENT = BOARD\nNAME = A_SENSOR_WITH_A_LONG_NAME\nID = 18\nTYPE = 1\n"
      "INITFLAG = 0\nCONTROLMASK = 0\nVALUE = T1, 5\n");
  ASSERT_EQ(CheckModel(), 1u);
  ASSERT_EQ(gccOutput(Path("board.meta")), 1u);
  ASSERT_EQ(gccOutputD(Path("board.metad")), 1u);
  const std::string answers =
      ": 2 sensors, found, found, found, group 1; A_SENSOR_WITH_A_LONG_NAME = 18\n";
  // The files are loaded when the process ends, which is not a leak.
  setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
  // What was made or registered last comes first, also where the host carries the library inside.
  for (const char* host : {"asking_host", "carrying_host"}) {
    SCOPED_TRACE(host);
    EXPECT_EQ(RunHost(host, folder()),
              "main" + answers + "registered last" + answers + "made after the first question" +
                  answers + "made before the first question" + answers + "registered first" +
                  answers + "made before main" + answers);
  }
}

}  // namespace
