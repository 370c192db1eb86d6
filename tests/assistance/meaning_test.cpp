// What pieces of a script are, what it does not say itself, and who calls whom.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "assistance/calls.h"
#include "assistance/hints.h"
#include "assistance/tokens.h"
#include "support/text_file.h"
#include "tests/assistance/marked.h"

namespace {

using namespace rux::assistance;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kKinds[] = {"section",  "key",      "word",   "type",  "name",
                                  "action",   "table",    "global", "value", "property",
                                  "argument", "operator", "number", "text"};

// "text kind", with a star where something is defined.
std::vector<std::string> TokensIn(const std::string& script) {
  const Machine machine(script);
  std::vector<std::string> rows;
  for (const Token& token : TokensOf(machine.index(), 0)) {
    rows.push_back(machine.TextAt(0, token.range) + " " +
                   kKinds[static_cast<std::size_t>(token.kind)] + (token.is_definition ? "*" : ""));
  }
  return rows;
}

TEST(TokensTest, AreWhatKeysAndPartsMean) {
  EXPECT_THAT(TokensIn("[DEFINE]\nVT_CALL = 3\nHOT = 0x5A\n[ACTION]\nNAME = SPIN\nARGNUMBER = 1\n"
                       "VALUE = VT_CALL, SPIN, ARG1, G_A, 7\n[GLOBAL]\nG_A = VT_CALL, NONE\n"),
              ElementsAre("DEFINE section", "VT_CALL word*", "3 number", "HOT word*", "0x5A number",
                          "ACTION section", "NAME key", "SPIN action*", "ARGNUMBER key", "1 number",
                          "VALUE key", "VT_CALL type", "SPIN action", "ARG1 argument", "G_A global",
                          "7 number", "GLOBAL section", "G_A global*", "VT_CALL type"));
}

TEST(TokensTest, LeaveOutWhatMeansNothing) {
  EXPECT_THAT(TokensIn("[NOTHING]\nNAME = A\n[GROUP]\nOTHER = 1\nCHILDGROUP = 1, 2\n"),
              ElementsAre("GROUP section", "CHILDGROUP key", "1 number"));
}

std::vector<std::string> HintsOf(const std::string& script) {
  const Machine machine(script);
  const auto size = static_cast<std::uint32_t>(script.size());
  std::vector<std::string> rows;
  for (const Hint& hint : HintsIn(machine.index(), 0, {0, size})) {
    rows.push_back(std::to_string(hint.offset) + (hint.is_before ? " before " : " after ") +
                   hint.text);
  }
  return rows;
}

TEST(HintsTest, NameWhatAnIdIsOf) {
  const std::string script = "[PELMGROUP]\nSENSORS = 5, 6\n[SENSOR]\nNAME = CPU\nID = 0x5\n";
  const auto after = std::to_string(script.find("5,") + 1);
  EXPECT_THAT(HintsOf(script), ElementsAre(after + " after CPU"));
}

TEST(HintsTest, ShowValuesOfWordsAndNameNumbersInValues) {
  EXPECT_THAT(HintsOf("[DEFINE]\nHOT = 90\n[SENSOR]\nTHRESHOLD_FH = HOT\n"),
              ElementsAre("45 after = 90"));
  const std::string calls =
      "[DEFINE]\nVT_CALL = 3\n[ACTION]\nNAME = SPIN\nARGNUMBER = 1\n"
      "VALUE = VT_CALL, SPIN, 7\n";
  EXPECT_THAT(HintsOf(calls), ElementsAre(std::to_string(calls.find('7')) + " before ARG1:"));
}

constexpr char kActions[] =
    "[DEFINE]\nVT_CALL = 3\n[ACTION]\nNAME = STOP^\n[ACTION]\nNAME = SPIN\n"
    "VALUE = VT_CALL, STOP\nVALUE_B = VT_CALL, STOP\n[GLOBAL]\nG_A = VT_CALL, STOP\n";

TEST(CallsTest, HaveSectionsWithTheirPlaces) {
  const Marked marked(kActions);
  const rux::index::Index& index = marked.place().index;
  const Id action = ActionAt(marked.place());
  ASSERT_EQ(action, 1U);
  const std::vector<Calls> callers = CallersOf(index, action);
  ASSERT_EQ(callers.size(), 2U);
  EXPECT_EQ(callers[0].section, 2U);
  EXPECT_THAT(callers[0].places.size(), 2U);
  EXPECT_EQ(marked.Shown({0, callers[1].places[0]}), "10: STOP");
  EXPECT_EQ(callers[0].global, kNone);
  EXPECT_EQ(marked.Shown({0, index.definitions()[callers[1].global].name}), "10: G_A");
  EXPECT_THAT(CallsAt(marked.place()), IsEmpty());
}

// The lines of the calls at a place, "7: STOP".
std::vector<std::string> CallsIn(const std::string& script) {
  const Marked marked(script);
  std::vector<std::string> places;
  for (const Calls& calls : CallsAt(marked.place())) {
    for (const rux::support::ByteRange& place : calls.places) {
      places.push_back(marked.Shown({0, place}));
    }
  }
  return places;
}

TEST(CallsTest, AreThoseOfASectionOrOfOneGlobal) {
  const std::string actions = "[DEFINE]\nVT_CALL = 3\n[ACTION]\nNAME = STOP\n";
  EXPECT_THAT(CallsIn(actions + "[ACTION]\n^NAME = SPIN\nVALUE = VT_CALL, STOP\n"
                                "VALUE_B = VT_CALL, STOP\n"),
              ElementsAre("7: STOP", "8: STOP"));
  const std::string globals = "G_A = VT_CALL, STOP\n^G_B = VT_CALL, STOP\n";
  EXPECT_THAT(CallsIn(actions + "[GLOBAL]\n" + globals), ElementsAre("7: STOP"));
}

TEST(CallsTest, AreOfActionsOnly) {
  const Marked marked("[GROUP]\nNAME = A^\n");
  EXPECT_EQ(ActionAt(marked.place()), kNone);
}

}  // namespace
