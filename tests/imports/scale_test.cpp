#include "imports/scale.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "imports/board.h"
#include "imports/decimal.h"
#include "losses/ledger.h"

namespace rux::imports {
namespace {

std::vector<Limit> LimitsOf(const std::vector<std::string>& numbers) {
  std::vector<Limit> limits;
  limits.reserve(numbers.size());
  for (const std::string& number : numbers)
    limits.push_back({language::ENTRY_THRESHOLD_FH, *Decimal::In(number), losses::kNoItem});
  return limits;
}

// "1000 12500 -5000": the power of ten, signed or not, and the numbers; "-" does not fit.
std::string Scaled(const std::vector<std::string>& numbers) {
  const std::vector<Limit> limits = LimitsOf(numbers);
  const ScaledLimits scaled = ScaleFor(limits);
  std::string text = std::to_string(scaled.scale.power) + (scaled.scale.is_signed ? "s" : "u");
  std::size_t next = 0;
  for (std::size_t i = 0; i < limits.size(); ++i) {
    const bool fits = next < scaled.fitting.size() && scaled.fitting[next] == i;
    text += ' ' + (fits ? *NumberFor(limits[i].amount, scaled.scale) : "-");
    if (fits) ++next;
  }
  return text;
}

TEST(Scale, IsTheLargestUnitThatKeepsAllExact) {
  EXPECT_EQ(Scaled({"95", "-40"}), "0s 95 -40");
  EXPECT_EQ(Scaled({"12.5", "-5"}), "3s 12500 -5000");
  EXPECT_EQ(Scaled({"0.0001"}), "6s 100");
  EXPECT_EQ(Scaled({}), "0s");
}

TEST(Scale, MinusOneNeedsAnotherUnit) { EXPECT_EQ(Scaled({"5", "-1"}), "3s 5000 -1000"); }

TEST(Scale, LargeAmountsTakeAnyDecimalFraction) {
  EXPECT_EQ(Scaled({"20000000.5"}), "1s 200000005");
}

TEST(Scale, NumbersFrom2To31AreUnsigned) {
  EXPECT_EQ(Scaled({"2147483647"}), "0s 2147483647");
  EXPECT_EQ(Scaled({"2147483648"}), "0u 2147483648");
  EXPECT_EQ(Scaled({"4294967294"}), "0u 4294967294");
}

TEST(Scale, WhatHasNoCommonUnitDoesNotFit) {
  EXPECT_EQ(Scaled({"4294967295"}), "0s -");
  EXPECT_EQ(Scaled({"2147483648", "-5"}), "0u 2147483648 -");
  EXPECT_EQ(Scaled({"1e-12", "7"}), "0s - 7");
  // A number has ten characters at most.
  EXPECT_EQ(Scaled({"-1000000000"}), "0s -");
  EXPECT_EQ(Scaled({"-999999999"}), "0s -999999999");
}

}  // namespace
}  // namespace rux::imports
