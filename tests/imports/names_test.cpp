#include "imports/names.h"

#include <gtest/gtest.h>

#include <string>

namespace rux::imports {
namespace {

TEST(Names, ConsistOfLettersDigitsAndAFewSigns) {
  EXPECT_EQ(LegalName("PDB FAN 1"), "PDB_FAN_1");
  EXPECT_EQ(LegalName("+12V"), "+12V");
  EXPECT_EQ(LegalName("  a  (b) "), "a_b");
  EXPECT_EQ(LegalName("\xC3\xA4"), "");
  EXPECT_EQ(LegalKey("Connector.Pwm-1"), "Connector_Pwm_1");
  EXPECT_EQ(LegalKey("12V"), "_12V");
}

TEST(Names, AreNotLong) {
  EXPECT_EQ(LegalName(std::string(100'000, 'a')), std::string(kMostNameBytes, 'a'));
}

TEST(Names, AreUnique) {
  Names names;
  EXPECT_EQ(names.Take("FAN", "SENSOR"), "FAN");
  EXPECT_EQ(names.Take("FAN", "SENSOR"), "FAN_2");
  EXPECT_EQ(names.Take("FAN_2", "SENSOR"), "FAN_2_2");
  EXPECT_EQ(names.Take("FAN", "SENSOR"), "FAN_3");
}

TEST(Names, AreNotNumbers) {
  Names names;
  EXPECT_EQ(names.Take("0", "GROUP"), "GROUP_0");
  EXPECT_EQ(names.Take("-1", "GROUP"), "GROUP_-1");
  EXPECT_EQ(names.Take("", "GROUP"), "GROUP");
}

TEST(Ids, AreTakenOnce) {
  Ids ids;
  EXPECT_EQ(ids.TakeNext(), 1U);
  EXPECT_TRUE(ids.Take(0x101));
  EXPECT_FALSE(ids.Take(0x101));
  EXPECT_FALSE(ids.Take(0xFFFFFFFF));
  EXPECT_EQ(ids.TakeNext(), 0x102U);
  EXPECT_TRUE(ids.Take(0xFFFFFFFE));
  EXPECT_EQ(ids.TakeNext(), 2U);
}

}  // namespace
}  // namespace rux::imports
