#include "tests/findings/cases.h"

namespace {

const std::vector<ScriptCase> kReading = {
    {"[FOO]\nA = 1\n[PROPERTY]\nB = 1\n", {"UnknownSection(1, FOO) at 0/0"}},
    {"[PROPERTY]\nA = 1\n[MORVRUX]\nVERSION = 1\nX = 1\n",
     {"RejectedItem(2, MORVRUX) at 0/1/1",
      "UnknownEntry(board.rux, 5, MORVRUX, X) in board.rux:5 at 0/1/1/key"}},
    {"[PROPERTY]\nA = 1\n[INCLUDE]\nFILE = none.rux\n",
     {"MissingInclude(board.rux, 4, INCLUDE, FILE, none.rux) in board.rux:4 at 0/1/0/0"}},
};

const std::vector<ScriptCase> kEntries = {
    {"[TABLE]\nNAME = T\nTYPE = 1\n256 = 1\n",
     {"InvalidEntryName(board.rux, 4, TABLE, 256) in board.rux:4 at 0/0/2/key"}},
    {"[PROPERTY]\nA = 1\n[DEVICE]\nNAME = D\nINITFLAG = 0\nCONTROLMASK = 0\n",
     {"MissingEntry(board.rux, 0, DEVICE, ID) in board.rux:0 at 0/1"}},
    {"[PROPERTY]\nA =\n", {"MissingValue(board.rux, 2, PROPERTY, A) in board.rux:2 at 0/0/0"}},
    {"[PROPERTY]\nA = \"\"\n",
     {"MissingValue(board.rux, 2, PROPERTY, A) in board.rux:2 at 0/0/0/0"}},
    {"[PROPERTY]\nA = 1\nB = 1,2\n",
     {"SurplusValues(board.rux, 3, PROPERTY, B) in board.rux:3 at 0/0/1/1"}},
    {"[TABLE]\nTYPE = x\nNAME = T\n",
     {"UndefinedWord(board.rux, 2, TABLE, TYPE, x) in board.rux:2 at 0/0/0/0"}},
    {"[REPEATER]\nR = 1\n",
     {"IncompleteRepeater(board.rux, 2, REPEATER, R) in board.rux:2 at 0/0/0"}},
    // Items that act while the script is read are checked then, too.
    {"[INCLUDE]\nFILE =\n",
     {"MissingValue(board.rux, 2, INCLUDE, FILE) in board.rux:2 at 0/0/0",
      "MissingValue(board.rux, 2, INCLUDE, FILE) in board.rux:2 at 0/0/0"}},
};

const std::vector<ScriptCase> kValues = {
    {"[GLOBAL]\nG_A =\n", {"MissingValueType(board.rux, 2, GLOBAL, G_A) in board.rux:2 at 0/0/0"}},
    {"[GLOBAL]\nG_A = VT, 1\n",
     {"UnknownValueType(board.rux, 2, GLOBAL, G_A, VT) in board.rux:2 at 0/0/0/0"}},
    {"[DEFINE]\nVT = 1\n[GLOBAL]\nG_A = VT\n",
     {"TooFewOperands(board.rux, 4, GLOBAL, G_A, VT) in board.rux:4 at 0/1/0/0"}},
    {"[DEFINE]\nVT = 1\n[GLOBAL]\nG_A = VT, 1, 2, 3\n",
     {"TooManyOperands(board.rux, 4, GLOBAL, G_A, VT) in board.rux:4 at 0/1/0/2"}},
    {"[DEFINE]\nVT = 2\n[GLOBAL]\nG_A = VT, ?, 1, 2\n",
     {"UnknownOperator(board.rux, 4, GLOBAL, G_A, ?) in board.rux:4 at 0/1/0/1"}},
    {"[DEFINE]\nVT = 4\n[GLOBAL]\nG_A = VT, 1, 2, BUSTYPE_SIMPLEIOPORT, 7\n",
     {"NonzeroBaseAddress(board.rux, 4, GLOBAL, G_A, 7) in board.rux:4 at 0/1/0/4"}},
    {"[DEFINE]\nVT = 12\n[GLOBAL]\nG_A = VT, 1, 2, 3, 4\n",
     {"SmbusAddress(board.rux, 4) in board.rux:4 at 0/1/0/4",
      "SmbusBusType(board.rux, 4) in board.rux:4 at 0/1/0/3"}},
};

const std::vector<ScriptCase> kReferences = {
    {"[DEFINE]\nVT = 1\n[SENSOR]\nPARENT = G\nNAME = S\nID = 1\nTYPE = 1\nINITFLAG = 0\n"
     "CONTROLMASK = 0\nVALUE = VT, 1\n",
     {"UnknownParentGroup(board.rux, 4, SENSOR, PARENT, G) in board.rux:4 at 0/1/0/0",
      "UnlistedSensor(board.rux, 6, SENSOR, ID, 1) in board.rux:6 at 0/1/2/0"}},
    // Entries are checked in the order of the kind's templates.
    {"[PELMGROUP]\nSENSORS = 3,4\nNAME = P\nID = 1\nPID = 2\n",
     {"UnknownParentPelmgroup(board.rux, 5, PELMGROUP, PID, 2) in board.rux:5 at 0/0/3/0",
      "UnknownSensor(board.rux, 2, PELMGROUP, SENSORS, 3) in board.rux:2 at 0/0/0/0",
      "UnknownSensor(board.rux, 2, PELMGROUP, SENSORS, 4) in board.rux:2 at 0/0/0/1"}},
    {"[DEFINE]\nCALL = 3\nCELL = 10\n[ACTION]\nNAME = A\nARGNUMBER = 1\n[GLOBAL]\n"
     "G_1 = CALL, B, 1\nG_2 = CALL, A\nG_3 = CELL, T, x\n",
     {"UnknownAction(board.rux, 8, GLOBAL, G_1, B) in board.rux:8 at 0/2/0/1",
      "ArgumentCount(board.rux, 9, GLOBAL, G_2, A, 1, 0) in board.rux:9 at 0/2/1/1, other 0/1/0/0",
      "UnknownTable(board.rux, 10, GLOBAL, G_3, T) in board.rux:10 at 0/2/2/1",
      "UndefinedWord(board.rux, 10, GLOBAL, G_3, x) in board.rux:10 at 0/2/2/2"}},
    {"[DEFINE]\nLIST = 7\n[GLOBAL]\nG_1 = LIST, G_X, ARG1, VALUE_9, x\n",
     {"UnknownGlobal(board.rux, 4, GLOBAL, G_1, G_X) in board.rux:4 at 0/1/0/1",
      "InvalidArgument(board.rux, 4, GLOBAL, G_1, ARG1) in board.rux:4 at 0/1/0/2",
      "UnknownValue(board.rux, 4, GLOBAL, G_1, VALUE_9) in board.rux:4 at 0/1/0/3",
      "UndefinedWord(board.rux, 4, GLOBAL, G_1, x) in board.rux:4 at 0/1/0/4"}},
    // Plain numbers are checked after the references on both sides of them.
    {"[DEFINE]\nVT = 5\n[GLOBAL]\nG_1 = VT, a, b, c, d, e\n",
     {"UndefinedWord(board.rux, 4, GLOBAL, G_1, a) in board.rux:4 at 0/1/0/1",
      "UndefinedWord(board.rux, 4, GLOBAL, G_1, d) in board.rux:4 at 0/1/0/4",
      "UndefinedWord(board.rux, 4, GLOBAL, G_1, b) in board.rux:4 at 0/1/0/2",
      "UndefinedWord(board.rux, 4, GLOBAL, G_1, c) in board.rux:4 at 0/1/0/3",
      "UndefinedWord(board.rux, 4, GLOBAL, G_1, e) in board.rux:4 at 0/1/0/5"}},
    {"[REPEATER]\nR = x, A, 1, G_X, ARG0, y\n",
     {"UnknownAction(board.rux, 2, REPEATER, R, A) in board.rux:2 at 0/0/0/1",
      "UndefinedWord(board.rux, 2, REPEATER, R, x) in board.rux:2 at 0/0/0/0",
      "UnknownGlobal(board.rux, 2, REPEATER, R, G_X) in board.rux:2 at 0/0/0/3",
      "UndefinedWord(board.rux, 2, REPEATER, R, y) in board.rux:2 at 0/0/0/5"}},
};

const std::vector<ScriptCase> kSections = {
    {"[MORVRUX]\nVERSION = 1\n[MORVRUX]\nVERSION = 1\n",
     {"RedefinedSection(board.rux, 1, MORVRUX, MORVRUX) in board.rux:1 at 0/0",
      "RedefinedSection(board.rux, 3, MORVRUX, MORVRUX) in board.rux:3 at 0/1, other 0/0"}},
    {"[PROPERTY]\nA = 1\n[PROPERTY]\nB = 1\nA = 2\n",
     {"RedefinedElsewhere(board.rux, 5, PROPERTY, A, board.rux, 2) in board.rux:5 at 0/1/1/key, "
      "other 0/0/0/key"}},
    {"[PROPERTY]\nA = 1\nA = 2\n",
     {"RedefinedEntry(board.rux, 3, PROPERTY, A) in board.rux:3 at 0/0/1/key, other 0/0/0/key"}},
    {"[TABLE]\nNAME = T\nTYPE = 1\n[TABLE]\nTYPE = 1\nNAME = T\n",
     {"RedefinedName(board.rux, 6, TABLE, T, board.rux, 2) in board.rux:6 at 0/1/1/0, "
      "other 0/0/0/0"}},
    {"[DEVICE]\nNAME = A\nID = 0x10\nINITFLAG = 0\nCONTROLMASK = 0\n"
     "[DEVICE]\nID = 16\nNAME = B\nINITFLAG = 0\nCONTROLMASK = 0\n",
     {"RedefinedId(board.rux, 7, DEVICE, 16, board.rux, 3) in board.rux:7 at 0/1/0/0, "
      "other 0/0/1/0"}},
    // The place is the section's, the problem is its parent.
    {"[GROUP]\nNAME = A\nPARENT = B\nCHILDGROUP = 0\n"
     "[GROUP]\nPARENT = 0\nNAME = B\nCHILDGROUP = 0\n",
     {"ParentDefinedLater(board.rux, 1) in board.rux:1 at 0/0/1/0, other 0/1"}},
};

}  // namespace

const std::vector<ScriptCase>& ScriptCases() {
  static const auto* all = [] {
    auto* cases = new std::vector<ScriptCase>;
    for (const auto* family : {&kReading, &kEntries, &kValues, &kReferences, &kSections}) {
      cases->insert(cases->end(), family->begin(), family->end());
    }
    return cases;
  }();
  return *all;
}
