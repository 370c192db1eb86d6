#include "imports/decimal.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace rux::imports {
namespace {

std::string TextOf(const std::optional<Decimal>& decimal) {
  return decimal ? decimal->Text() : "none";
}

TEST(Decimal, IsReadAsItIsWritten) {
  EXPECT_EQ(TextOf(Decimal::In("10.8")), "10.8");
  EXPECT_EQ(TextOf(Decimal::In("-0.050")), "-0.05");
  EXPECT_EQ(TextOf(Decimal::In("+5")), "5");
  EXPECT_EQ(TextOf(Decimal::In("1.05e-3")), "0.00105");
  EXPECT_EQ(TextOf(Decimal::In("2E3")), "2000");
  EXPECT_EQ(TextOf(Decimal::In("0x1F")), "31");
  EXPECT_EQ(TextOf(Decimal::In("-0x10")), "-16");
  EXPECT_EQ(TextOf(Decimal::In("0.000")), "0");
  EXPECT_EQ(TextOf(Decimal::In("5.")), "5");
  EXPECT_EQ(TextOf(Decimal::In(".5")), "0.5");
  EXPECT_EQ(TextOf(Decimal::In("999999999999999999")), "999999999999999999");
}

TEST(Decimal, OtherTextsAreNone) {
  for (const char* text :
       {"", "-", ".", "e5", "1e", "1e+", "0x", "1 ", " 1", "1,5", "--1", "1.2.3", "nan", "inf",
        "0x100000000", "1e999", "1000000000000000000", "0.1234567890123456789"})
    EXPECT_EQ(TextOf(Decimal::In(text)), "none") << text;
}

TEST(Decimal, ANumberMayHaveTooManyDigits) {
  for (const char* text : {"0x100000000", "1e999", "1000000000000000000", "0.1234567890123456789",
                           "10.8", "5.", ".5", "-0x1F", "+2E-3"})
    EXPECT_TRUE(Decimal::IsNumber(text)) << text;
  for (const char* text : {"", "-", ".", "e5", "1e", "1e+", "0x", "0xG", "1 ", " 1", "1,5", "--1",
                           "1.2.3", "nan", "null", "$bus + 1"})
    EXPECT_FALSE(Decimal::IsNumber(text)) << text;
}

TEST(Decimal, HasOneForm) {
  EXPECT_EQ(*Decimal::In("1.50"), *Decimal::In("15e-1"));
  EXPECT_EQ(*Decimal::In("-0"), Decimal());
}

TEST(Decimal, IsWholeAtSomePowers) {
  const Decimal decimal = *Decimal::In("-1.25");
  EXPECT_EQ(decimal.WholeAt(1), std::nullopt);
  EXPECT_EQ(decimal.WholeAt(2), -125);
  EXPECT_EQ(decimal.WholeAt(3), -1250);
  EXPECT_EQ(Decimal::In("1e18")->WholeAt(0), std::nullopt);
  EXPECT_EQ(Decimal::In("1e17")->WholeAt(0), 100'000'000'000'000'000);
  EXPECT_EQ(Decimal().WholeAt(-5), 0);
}

TEST(Decimal, QuotientsAreExactOrNone) {
  EXPECT_EQ(TextOf(Decimal::Quotient(1, 8)), "0.125");
  EXPECT_EQ(TextOf(Decimal::Quotient(-6, 4)), "-1.5");
  EXPECT_EQ(TextOf(Decimal::Quotient(6, -4)), "-1.5");
  EXPECT_EQ(TextOf(Decimal::Quotient(0, 7)), "0");
  EXPECT_EQ(TextOf(Decimal::Quotient(21, 7)), "3");
  EXPECT_EQ(TextOf(Decimal::Quotient(1, 3)), "none");
}

TEST(Decimal, ProductsAreExactOrNone) {
  EXPECT_EQ(TextOf(Decimal::In("1.5")->Times(*Decimal::In("-0.02"))), "-0.03");
  EXPECT_EQ(TextOf(Decimal::In("123456789012")->Times(*Decimal::In("123456789012"))), "none");
}

}  // namespace
}  // namespace rux::imports
