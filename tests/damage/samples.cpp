#include "tests/damage/samples.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "ruxcomp/compile.h"
#include "tests/support/host.h"
#include "tests/support/temp_folder.h"

namespace {

// Sections of every compiled kind, values of every shape, names in every table.
constexpr char kMetaScript[] = R"([DEFINE]
T0 = 0
T1 = 1
T2 = 2
T3 = 3
T5 = 5
T7 = 7
T10 = 10
T13 = 13
T102 = 102
[MORVRUX]
VERSION = 1
[PROPERTY]
COLOR = red
[SYSTEM]
TYPE = 1
MODEL = ""
FLAG = 0
RUXLOOP = 9
P_SITE = lab
[GROUP]
PARENT = 0
NAME = BOARD
CHILDGROUP = 0
VALUE_INIT = T3,BEEP,7
[PELMGROUP]
NAME = ALL
ID = 1
PID = 0
SENSORS = 16
[SENSOR]
PARENT = BOARD
NAME = INLET
ID = 16
TYPE = 1
INITFLAG = 3
CONTROLMASK = 0xFFFFFFFF
VALUE = T5,G_F,1,1,0,2
VALUE_RAW = T13,1
[DEVICE]
NAME = FAN
ID = 2
INITFLAG = 3
CONTROLMASK = 0
VALUE_ = T0
[ACTION]
NAME = BEEP
ARGNUMBER = 1
VALUE = T2,==,ARG1,VALUE_1,1,0
VALUE_1 = T10,CURVE,ARG1
[TABLE]
NAME = CURVE
TYPE = 2
0.1 = 9
[GLOBAL]
G_F = T7,1
G_H = T102,1,BEEP,2
[REPEATER]
TICK = 5,BEEP,G_F
)";

// Payloads of every class and values of every shape, in kinds with few templates. The sensor of the
// list is not there: it would be a third of the file.
constexpr char kDebugScript[] = R"([DEFINE]
T0 = 0
T1 = 1
T2 = 2
T3 = 3
T4 = 4
T5 = 5
T6 = 6
T7 = 7
T10 = 10
T13 = 13
[PROPERTY]
A = "x, y"
[INCLUDE]
FILE = more.rux
[PELMGROUP]
NAME = p
ID = 1
PID = 0
SENSORS = 16
[REPEATER]
R = 3,go,1
[GLOBAL]
G_0 = T0
G_1 = T1,1
G_2 = T2,+,1,2
G_3 = T3,go,1
G_4 = T4,1,1,1,0
G_5 = T5,1,1,1,0,7
G_6 = T6,1,2,3
G_7 = T7,1
G_10 = T10,t,1
G_13 = T13,1
)";
constexpr char kIncluded[] = R"([IFDEF]
DEFINEWORD = T0
X = 9
[ACTION]
NAME = go
ARGNUMBER = 1
[TABLE]
NAME = t
TYPE = 1
0 = 7
)";

using Write = std::uint32_t(const std::string& path);

// Names no folder: the paths of scripts are in the file.
bool Compile(const std::string& folder, const char* script, Write* write, std::size_t findings) {
  if (chdir(folder.c_str()) != 0) return false;
  std::ofstream("board.rux") << script;
  std::ofstream("more.rux") << kIncluded;
  if (!gccCompStart("board.rux")) return false;
  gccParse();
  host::TakeMessages();
  gccCheck();
  return host::TakeMessages().size() == findings && write("sample");
}

// Of a script about which the check reports that many findings.
std::string Sample(const char* script, Write* write, std::size_t findings) {
  const TempFolder folder;
  const pid_t process = fork();
  if (process == 0) _exit(Compile(folder.path(), script, write, findings) ? 0 : 1);
  int status = -1;
  waitpid(process, &status, 0);
  if (status != 0) throw std::runtime_error("cannot compile a sample");
  return folder.Read("sample").replace(20, 4, 4, '\0');
}

}  // namespace

std::string MetaSample() { return Sample(kMetaScript, gccOutput, 0); }

std::string DebugMetaSample() { return Sample(kDebugScript, gccOutputD, 1); }
