// A script's model, written by one process and asked in another.
#include <sstream>

#include "tests/api/debug_bytes.h"

namespace {

constexpr char kBoard[] = R"([MORVRUX]
VERSION = "1.0"
[DEFINE]
T0 = 0
READ = 4
CALC = 2
LIST = 7
CURVE = 10
RAW = 13
INLET = 0x10
[INCLUDE]
FILE = fans.rux
[IFDEF]
DEFINEWORD = NOWHERE
EXTRA = INLET
[SYSTEM]
TYPE = 1
MODEL = board mk 2
FLAG = 0
RUXLOOP = 5
P_VENDOR = "a, b"
[GROUP]
PARENT = 0
NAME = main
CHILDGROUP = 0
VALUE_INIT = T0
[PELMGROUP]
NAME = front
ID = 1
PID = 0
SENSORS = INLET,0x11
[SENSOR]
PARENT = main
NAME = inlet
ID = INLET
TYPE = 1
INITFLAG = 0
CONTROLMASK = 0
VALUE = CALC,==,1,2,3,4
P_UNIT = C
VALUE_X = LIST,1,2
[DEVICE]
NAME = psu
ID = 2
INITFLAG = 0
CONTROLMASK = 0
[ACTION]
NAME = go
ARGNUMBER = 1
VALUE = READ,ARG1,0x10,1,0
[TABLE]
NAME = curve
TYPE = 1
0.3 = 7
[REPEATER]
R1 = 3,go,INLET
[PROPERTY]
A = x
)";

constexpr char kFans[] = R"(
[SENSOR]
PARENT = main
NAME = fan
ID = 0x11
TYPE = 1
INITFLAG = 0
CONTROLMASK = 0
VALUE = CURVE,curve,1
[GLOBAL]
G_SPEED = RAW,anything
)";

// What the debug queries answer about both: of each section its kind, name, parent and ID, then its
// entries.
// The ID of the inlet is a word, and a value of type 13 has no parts that are known.
constexpr char kAnswers[] = R"(1 - - -
  VERSION = 1.0
2 - - -
  A = x
3 - - -
  TYPE = 1
  MODEL = board mk 2
  FLAG = 0
  RUXLOOP = 5
  P_VENDOR = a, b
4 main 0 -
  PARENT = 0
  NAME = main
  CHILDGROUP = 0
  VALUE_INIT = T0
5 fan main 17
  PARENT = main
  NAME = fan
  ID = 0x11
  TYPE = 1
  INITFLAG = 0
  CONTROLMASK = 0
  VALUE = CURVE,curve,1
5 inlet main -
  PARENT = main
  NAME = inlet
  ID = INLET
  TYPE = 1
  INITFLAG = 0
  CONTROLMASK = 0
  VALUE = CALC,==,1,2,3,4
  P_UNIT = C
  VALUE_X = LIST,1,2
6 psu - 2
  NAME = psu
  ID = 2
  INITFLAG = 0
  CONTROLMASK = 0
7 go - -
  NAME = go
  ARGNUMBER = 1
  VALUE = READ,ARG1,0x10,1,0
8 curve - -
  NAME = curve
  TYPE = 1
  0.3 = 7
9 front - 1
  NAME = front
  ID = 1
  PID = 0
  SENSORS = INLET,0x11
10 - - -
  G_SPEED = 
11 - - -
  R1 = 3,go,INLET
12 - - -
  T0 = 0x0
  READ = 0x4
  CALC = 0x2
  LIST = 0x7
  CURVE = 0xa
  RAW = 0xd
  INLET = 0x10
13 - - -
  DEFINEWORD = NOWHERE
  EXTRA = 0x10
)";

std::string OrDash(const char* text) { return text ? text : "-"; }

std::string Answers() {
  std::ostringstream answers;
  for (std::uint32_t kind = 1; kind <= 13; ++kind) {
    for (std::uint32_t i = 0; const GDSECTION section = gdGetSectByIndex(kind, i); ++i) {
      const std::uint32_t id = gdGetSectID(section);
      answers << kind << ' ' << OrDash(gdGetSectName(section)) << ' '
              << OrDash(gdGetSectPName(section)) << ' '
              << (id == 0xFFFFFFFF ? "-" : std::to_string(id)) << '\n';
      for (std::uint32_t j = 0; const GDENTRY entry = gdGetEntryByIndex(section, j); ++j) {
        answers << "  " << gdGetEntryName(entry) << " = " << gdGetValue(entry) << '\n';
      }
    }
  }
  return answers.str();
}

class DebugRoundTripTest : public DebugTest {
 protected:
  // In a process of its own: compiles the script and writes its debug meta file under that name.
  void WriteElsewhere(const std::string& script, std::uint32_t valid, const std::string& name) {
    InOwnProcess([&] {
      Check(script, valid);
      Write(name, OutputD());
    });
  }

  // In a process of its own: loads the file `from` and writes what was loaded under the name `to`.
  void CopyElsewhere(const std::string& from, const std::string& to) {
    InOwnProcess([&] {
      ASSERT_EQ(gdInit(Path(from)), 1u);
      EXPECT_EQ(host::TakeMessages(), Lines{});
      Write(to, OutputD());
    });
  }
};

TEST_F(DebugRoundTripTest, LoadedModelAnswersLikeTheScript) {
  Write("fans.rux", kFans);
  InOwnProcess([&] {
    EXPECT_EQ(Check(kBoard, 1), Lines{});
    EXPECT_EQ(Answers(), kAnswers);
    Write("first.metad", OutputD());
  });
  InOwnProcess([&] {
    ASSERT_EQ(gdInit(Path("first.metad")), 1u);
    EXPECT_EQ(Answers(), kAnswers);
  });
}

// Identifiers, notations, lines, files and words do not show in the answers: they do in the bytes.
TEST_F(DebugRoundTripTest, LoadedModelIsWrittenAsItWasButForInclude) {
  Write("fans.rux", kFans);
  WriteElsewhere(kBoard, 1, "first.metad");
  CopyElsewhere("first.metad", "second.metad");
  CopyElsewhere("second.metad", "third.metad");

  std::string expected = ReadAll("first.metad");
  const std::string include = List({Section(
      Object(kIncludeSection, 2, 11, 0, "INCLUDE"),
      {Entry(Object(kFileEntry, 2, 12, 0, "FILE"), StringPayload(kFileEntry, "fans.rux"))})});
  const std::size_t at = expected.find(include);
  ASSERT_NE(at, std::string::npos);
  expected.erase(at, include.size());
  // The words: T0, READ, CALC, LIST, CURVE, RAW, INLET and EXTRA.
  const std::size_t kinds_at = 128 + 4 + 8 * (4 + 4) + (2 + 4 + 4 + 4 + 5 + 3 + 5 + 5);
  ASSERT_EQ(expected.substr(kinds_at, 4), Numbers({14}));
  expected = WithNumber(expected, kinds_at, 13);

  EXPECT_SAME_BYTES(ReadAll("second.metad"), expected);
  EXPECT_SAME_BYTES(ReadAll("third.metad"), expected);
}

TEST_F(DebugRoundTripTest, ModelThatFailedTheCheckIsKeptAsItWas) {
  WriteElsewhere("[DEFINE]\nT = 10\n1X = 2\n[GLOBAL]\nG_A = NOPE,1\nG_B = T,1\n[SYSTEM]\nP_ = x\n",
                 0, "first.metad");
  CopyElsewhere("first.metad", "second.metad");
  EXPECT_SAME_BYTES(ReadAll("second.metad"), ReadAll("first.metad"));
}

TEST_F(DebugRoundTripTest, RepeatedKeyKeepsItsLastTextAlone) {
  WriteElsewhere("[DEVICE]\nNAME = first\nID = 1\nNAME = second\n", 0, "first.metad");
  InOwnProcess([&] {
    ASSERT_EQ(gdInit(Path("first.metad")), 1u);
    EXPECT_EQ(Answers(), "6 second - 1\n  NAME = second\n  ID = 1\n");
  });
}

TEST_F(DebugRoundTripTest, ScriptThatBeginsWithAnIncludeCannotBeReadBack) {
  Write("fans.rux", kFans);
  WriteElsewhere("[INCLUDE]\nFILE = fans.rux\n", 0, "first.metad");
  InOwnProcess([&] { EXPECT_EQ(Load(ReadAll("first.metad")), "vector"); });
}

TEST_F(DebugRoundTripTest, ScriptOfNothingButIncludesIsReadBackAsNothing) {
  WriteElsewhere("[INCLUDE]\nFILE = none.rux\n", 1, "first.metad");
  InOwnProcess([&] {
    EXPECT_EQ(Load(ReadAll("first.metad")), "1");
    EXPECT_EQ(Answers(), "");
  });
}

TEST_F(DebugRoundTripTest, SecondFileOfAProcessIsReadAfterAnotherOneOnly) {
  InOwnProcess([&] {
    Write("first.metad", CompileD("[PROPERTY]\nA = x\n"));
    Write("second.metad", OutputD());
  });
  InOwnProcess([&] { EXPECT_EQ(Load(ReadAll("second.metad")), "vector"); });
  InOwnProcess([&] {
    EXPECT_EQ(Load(ReadAll("first.metad")), "1");
    EXPECT_EQ(Load(ReadAll("second.metad")), "1");
    EXPECT_EQ(Answers(), "2 - - -\n  A = x\n2 - - -\n  A = x\n");
  });
}

}  // namespace
