// What is shown of a text, and of the value that is being written.
#include "assistance/hover.h"

#include <gmock/gmock.h>

#include "assistance/signature.h"
#include "tests/assistance/marked.h"

namespace {

using namespace rux::assistance;

// "text: what is shown", or "-".
std::string HoverOf(const std::string& script) {
  const Marked marked(script);
  const auto hover = HoverAt(marked.place());
  return hover ? marked.machine().TextAt(0, hover->range) + ": " + hover->markdown : "-";
}

TEST(HoverTest, SaysWhatKindsAndKeysAre) {
  EXPECT_EQ(HoverOf("[TA^BLE]\n"), "TABLE: `[TABLE]` section; requires `NAME`, `TYPE`");
  EXPECT_EQ(HoverOf("[GROUP]\nPAR^ENT = 0\n"),
            "PARENT: `PARENT` in `[GROUP]`: required, a text; the `NAME` of a `[GROUP]`, or 0");
  EXPECT_EQ(HoverOf("[SENSOR]\nTHEORY^ = 5\n"),
            "THEORY: `THEORY` in `[SENSOR]`: optional, a number or a word");
  EXPECT_EQ(HoverOf("[GROUP]\nOTHER^ = 0\n"), "OTHER: not a key of `[GROUP]`");
}

TEST(HoverTest, ShowsNumbersInBothBasesAndWithTheirSign) {
  EXPECT_EQ(HoverOf("[SENSOR]\nTYPE = 0x1^0\n"), "0x10: 16 (0x10)");
  EXPECT_EQ(HoverOf("[SENSOR]\nTHRESHOLD_FL = -2^0\n"), "-20: 4294967276 (0xFFFFFFEC, -20)");
}

TEST(HoverTest, ShowsTheValueOfAWordAndWhereItComesFrom) {
  EXPECT_EQ(HoverOf("[DEFINE]\nA = 10\nB = A\n[SYSTEM]\nTYPE = ^B\n"),
            "B: word `B` = 10 (0xA), from `A`, defined at main.rux:3");
  EXPECT_EQ(HoverOf("[DEFINE]\nA^ = 10\n[DEFINE]\nA = 11\n"),
            "A: word `A` = 10 (0xA), defined at main.rux:2\n\n"
            "defined again at main.rux:4, as 11 (0xB)");
}

TEST(HoverTest, ShowsTheSectionThatIsMeantWithLimitsAndLists) {
  EXPECT_EQ(HoverOf("[DEFINE]\nHOT = 90\n[PELMGROUP]\nNAME = ALL\nSENSORS = ^5\n"
                    "[SENSOR]\nNAME = CPU\nID = 5\nTHRESHOLD_FH = HOT\n"),
            "5: 5 (0x5)\n\n`[SENSOR] CPU`, main.rux:8\n\n"
            "~~~~~~rux\n[SENSOR]\nNAME = CPU\nID = 5\nTHRESHOLD_FH = HOT\n~~~~~~\n\n"
            "THRESHOLD_FH 90 (0x5A)\n\nin the SENSORS of `ALL`");
}

TEST(HoverTest, ShowsTypesAndGlobals) {
  const std::string script = "[DEFINE]\nVT_TABLE = 10\n[GLOBAL]\nG_A = VT_TABLE, CURVE, 1\nG_B = ";
  EXPECT_EQ(HoverOf(script + "VT_^TABLE, CURVE, G_A\n"),
            "VT_TABLE: value type 10: table, index (operand)\n\n"
            "word `VT_TABLE` = 10 (0xA), defined at main.rux:2");
  EXPECT_EQ(HoverOf(script + "VT_TABLE, CURVE, G^_A\n"),
            "G_A: `[GLOBAL] G_A`, main.rux:4\n\n~~~~~~rux\nG_A = VT_TABLE, CURVE, 1\n~~~~~~");
}

TEST(HoverTest, SaysWhatIsNotCompiledAsItLooks) {
  EXPECT_EQ(HoverOf("[SENSOR]\nTYPE = 1, ^2\n"), "2: the compiler drops this part");
  EXPECT_EQ(HoverOf("[SENSOR]\nNAME = ^\n"), "-");
  EXPECT_EQ(HoverOf("# comm^ent\n"), "-");
}

// The label, with the active part in brackets.
std::string SignatureOf(const std::string& script) {
  const Marked marked(
      "[DEFINE]\nVT_CONST = 1\nVT_CALC = 2\nVT_CALL = 3\nVT_LIST = 7\n"
      "[ACTION]\nNAME = GO\nARGNUMBER = 2\n" +
      script);
  const auto signature = SignatureAt(marked.place());
  if (!signature) return "-";
  std::string label = signature->label;
  if (signature->active >= signature->parameters.size()) return label;
  const Signature::Parameter active = signature->parameters[signature->active];
  return label.insert(active.end, "]").insert(active.begin, "[");
}

TEST(SignatureTest, HasThePartsOfTheType) {
  EXPECT_EQ(SignatureOf("[GLOBAL]\nG_A = VT_CONST, ^"), "VT_CONST, [text (operand)]");
  EXPECT_EQ(SignatureOf("[GLOBAL]\nG_A = VT_CO^NST, 1"), "[VT_CONST], text (operand)");
  EXPECT_EQ(SignatureOf("[GLOBAL]\nG_A = VT_CONST, 1, ^"), "VT_CONST, text (operand)");
  EXPECT_EQ(SignatureOf("[GLOBAL]\nG_A = VT_CALC, +, ^"),
            "VT_CALC, operator, [operand1 (operand)], operand2 (operand)");
  EXPECT_EQ(SignatureOf("[GLOBAL]\nG_A = VT_CALC, >, ^"),
            "VT_CALC, operator, [operand1 (operand)], operand2 (operand), operand3 (operand), "
            "operand4 (operand)");
  EXPECT_EQ(SignatureOf("[GLOBAL]\nG_A = VT_LIST, 1, ^"), "VT_LIST, [args (operands ...)]");
}

TEST(SignatureTest, OfACallHasTheArgumentsOfItsAction) {
  EXPECT_EQ(SignatureOf("[GLOBAL]\nG_A = VT_CALL, GO, 1, ^"),
            "VT_CALL, name (action), ARG1, [ARG2]");
  EXPECT_EQ(SignatureOf("[GLOBAL]\nG_A = VT_CALL, GO, 1, 2, ^"),
            "VT_CALL, name (action), ARG1, ARG2");
  EXPECT_EQ(SignatureOf("[GLOBAL]\nG_A = VT_CALL, STOP, 1, ^"),
            "VT_CALL, name (action), [args (operands ...)]");
  EXPECT_EQ(SignatureOf("[REPEATER]\nR = 3, GO, ^"), "count (number), action, [ARG1], ARG2");
}

TEST(SignatureTest, IsThereForValuesOnly) {
  EXPECT_EQ(SignatureOf("[GLOBAL]\nG_A = NO, ^"), "-");
  EXPECT_EQ(SignatureOf("[SENSOR]\nTYPE = 1^"), "-");
  EXPECT_EQ(SignatureOf("[GLOBAL]\nG_^A = VT_CONST, 1"), "-");
}

}  // namespace
