// What an index knows of a place in a text that is being written.
#include "index/spot.h"

#include <gtest/gtest.h>

#include "tests/index/machine.h"

namespace {

using namespace rux::index;

// "key NAME" and so on; ^ stands before the byte that is meant.
std::string SpotOf(std::string script) {
  const std::size_t mark = script.find('^');
  script.erase(mark, 1);
  const Machine machine(script);
  const Spot spot = SpotAt(machine.index(), 0, static_cast<std::uint32_t>(mark));
  const std::string text = machine.TextAt(0, spot.text);
  switch (spot.kind) {
    case Spot::Kind::kNothing:
      return "nothing";
    case Spot::Kind::kHeader:
      return "header " + text;
    case Spot::Kind::kKey:
      return (spot.section == kNone ? "key outside " : "key ") + text;
    case Spot::Kind::kPart:
      return "part " + std::to_string(spot.part) + " " + text;
  }
  return "";
}

TEST(SpotTest, FindsHeadersKeysAndParts) {
  EXPECT_EQ(SpotOf("[SEN^SOR]\n"), "header SENSOR");
  EXPECT_EQ(SpotOf("[SENSOR]^\n"), "header SENSOR");
  EXPECT_EQ(SpotOf("[SEN^"), "header SEN");
  EXPECT_EQ(SpotOf("[^"), "header ");
  EXPECT_EQ(SpotOf("^[SENSOR]\n"), "nothing");
  EXPECT_EQ(SpotOf("[SENSOR] ^\n"), "nothing");
  EXPECT_EQ(SpotOf("[SENSOR]\nNA^ME = A\n"), "key NAME");
  EXPECT_EQ(SpotOf("[SENSOR]\nNAME^\n"), "key NAME");
  EXPECT_EQ(SpotOf("[SENSOR]\nNAME ^= A\n"), "nothing");
  EXPECT_EQ(SpotOf("[SENSOR]\nNAME =^ A\n"), "part 0 ");
  EXPECT_EQ(SpotOf("[SENSOR]\nNAME = ^A\n"), "part 0 A");
  EXPECT_EQ(SpotOf("[SENSOR]\nNAME = A^\n"), "part 0 A");
}

TEST(SpotTest, FindsPlacesWhereSomethingMayBegin) {
  EXPECT_EQ(SpotOf("^"), "key outside ");
  EXPECT_EQ(SpotOf("\n^\n[SENSOR]\n"), "key outside ");
  EXPECT_EQ(SpotOf("[SENSOR]\n^"), "key ");
  EXPECT_EQ(SpotOf("[SENSOR]\nNAME = A\n  ^\nID = 1\n"), "key ");
  EXPECT_EQ(SpotOf("[SENSOR]\nNAME =^"), "part 0 ");
  EXPECT_EQ(SpotOf("[SENSOR]\nNAME = ^\nID = 1\n"), "part 0 ");
  EXPECT_EQ(SpotOf("[PELMGROUP]\nSENSORS = 1, ^\n"), "part 1 ");
  EXPECT_EQ(SpotOf("[PELMGROUP]\nSENSORS = 1, ^, 3\n"), "part 1 ");
  EXPECT_EQ(SpotOf("[PELMGROUP]\nSENSORS = ^, 3\n"), "part 0 ");
}

TEST(SpotTest, FindsPartsOnJoinedLinesAndInQuotes) {
  EXPECT_EQ(SpotOf("[PELMGROUP]\nSENSORS = 1, \\\n  2^2, 3\n"), "part 1 22");
  EXPECT_EQ(SpotOf("[PELMGROUP]\nSENSORS = 1, \\\n  ^\nID = 1\n"), "part 1 ");
  EXPECT_EQ(SpotOf("[GROUP]\nNAME = \"a, b^\"\n"), "part 0 a, b");
  EXPECT_EQ(SpotOf("[GLOBAL]\nG_A = V, \"a # b^\", 1\n"), "part 1 a # b");
}

TEST(SpotTest, FindsNothingInComments) {
  EXPECT_EQ(SpotOf("# co^mment\n"), "nothing");
  EXPECT_EQ(SpotOf("[SENSOR]\n; co^mment\n"), "nothing");
  EXPECT_EQ(SpotOf("[SENSOR]\nNAME = A # co^mment\n"), "nothing");
  EXPECT_EQ(SpotOf("[SENSOR] # co^mment\n"), "nothing");
  EXPECT_EQ(SpotOf("[SENSOR]\nNAME = A#no^ne\n"), "part 0 A#none");
}

TEST(SpotTest, FindsNothingInSectionsOfUnknownKinds) {
  EXPECT_EQ(SpotOf("[SENSER]\nNA^ME = A\n"), "nothing");
  EXPECT_EQ(SpotOf("[SEN^SER]\n"), "header SENSER");
}

}  // namespace
