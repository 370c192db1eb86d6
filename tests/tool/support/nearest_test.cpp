// When a name is most likely a slip of another one.
#include "support/nearest.h"

#include <gtest/gtest.h>

namespace {

using rux::support::IsSlipOf;

TEST(SlipTest, OfCaseOrderOrOneCharacter) {
  EXPECT_TRUE(IsSlipOf("ALWAYS", "always"));
  EXPECT_TRUE(IsSlipOf("ALWAYS", "ALWYAS"));
  EXPECT_TRUE(IsSlipOf("ALWAYS", "ALWAY"));
  EXPECT_TRUE(IsSlipOf("ALWAYS", "allways"));
}

TEST(SlipTest, NotOfAnotherCharacter) {
  EXPECT_FALSE(IsSlipOf("PSU_A", "PSU_B"));
  EXPECT_FALSE(IsSlipOf("ALWAYS", "ALWA"));
}

TEST(SlipTest, NotOfADigit) {
  EXPECT_FALSE(IsSlipOf("FAN1", "FAN2"));
  EXPECT_FALSE(IsSlipOf("FAN1", "FAN"));
  EXPECT_FALSE(IsSlipOf("FAN12", "FAN21"));
  EXPECT_TRUE(IsSlipOf("FAN12", "FNA12"));
}

}  // namespace
