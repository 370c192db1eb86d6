// Limits from the lowest up.
#include "assistance/limits.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "settings/limit_rule.h"
#include "tests/index/machine.h"

namespace {

using rux::settings::LimitRule;

std::string LimitsOf(const std::string& items, const std::vector<LimitRule>& rules = {}) {
  const Machine machine("[SENSOR]\n" + items);
  return rux::assistance::LimitsText(machine.index(), 0, rules);
}

constexpr char kBoth[] = "THRESHOLD_FH = 90\nTHEORY = 40\nTHRESHOLD_WL = 5\n";
constexpr char kNegative[] = "NAME = INLET\nTHRESHOLD_FL = 4294967291\nTHRESHOLD_WH = 1050\n";

TEST(LimitsTest, AreInOrder) {
  EXPECT_EQ(LimitsOf(kBoth), "WL 5 | THEORY 40 | FH 90");
  EXPECT_EQ(LimitsOf("THEORY = 40\n"), "");
  EXPECT_EQ(LimitsOf("THRESHOLD_FH = HOT\n"), "");
}

TEST(LimitsTest, HaveTheSignAndUnitThatAreStated) {
  LimitRule rule;
  EXPECT_EQ(LimitsOf(kNegative), "FL 4294967291 (0xFFFFFFFB, -5) | WH 1050");
  rule.sign = rux::settings::kSigned;
  EXPECT_EQ(LimitsOf(kNegative, {rule}), "FL -5 | WH 1050");
  rule.unit = "V";
  rule.divisor = 1000;
  EXPECT_EQ(LimitsOf(kNegative, {rule}), "FL -0.005 V | WH 1.05 V");
  rule.sensors = "CPU*";
  EXPECT_EQ(LimitsOf(kNegative, {rule}), "FL 4294967291 (0xFFFFFFFB, -5) | WH 1050");
}

TEST(LimitsTest, PreferWhatTheSensorSays) {
  LimitRule rule;
  rule.unit = "V";
  rule.unit_property = "UNIT";
  EXPECT_EQ(LimitsOf(std::string(kBoth) + "P_UNIT = C\n", {rule}),
            "WL 5 C | THEORY 40 C | FH 90 C");
  EXPECT_EQ(LimitsOf(std::string(kBoth) + "P_UNITS = C\n", {rule}),
            "WL 5 V | THEORY 40 V | FH 90 V");
}

}  // namespace
