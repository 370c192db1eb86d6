#include "imports/formats/ratio.h"

#include <cstdint>
#include <limits>
#include <numeric>
#include <optional>
#include <string>

#include "imports/decimal.h"

namespace rux::imports {
namespace {

using Whole = std::int64_t;

// Without the least number, every other one has an opposite.
constexpr Whole kWithoutOpposite = std::numeric_limits<Whole>::min();

std::optional<Whole> WholeProduct(Whole a, Whole b) {
  Whole product = 0;
  if (__builtin_mul_overflow(a, b, &product) || product == kWithoutOpposite) return std::nullopt;
  return product;
}

std::optional<Whole> WholeSum(Whole a, Whole b) {
  Whole sum = 0;
  if (__builtin_add_overflow(a, b, &sum) || sum == kWithoutOpposite) return std::nullopt;
  return sum;
}

Ratio Reduced(Whole top, Whole bottom) {
  const Whole common = std::gcd(top, bottom);
  return {top / common, bottom / common};
}

}  // namespace

std::string Ratio::Text() const {
  return bottom == 1 ? std::to_string(top) : std::to_string(top) + '/' + std::to_string(bottom);
}

std::optional<Ratio> RatioOf(const Decimal& number) {
  constexpr Whole kBase = 10;
  std::optional<Whole> top = number.digits();
  std::optional<Whole> bottom = 1;
  for (int i = 0; i < number.exponent() && top; ++i) top = WholeProduct(*top, kBase);
  for (int i = number.exponent(); i < 0 && bottom; ++i) bottom = WholeProduct(*bottom, kBase);
  if (!top || !bottom) return std::nullopt;
  return Reduced(*top, *bottom);
}

std::optional<Ratio> Sum(const Ratio& a, const Ratio& b) {
  const Whole common = std::gcd(a.bottom, b.bottom);
  const std::optional<Whole> left = WholeProduct(a.top, b.bottom / common);
  const std::optional<Whole> right = WholeProduct(b.top, a.bottom / common);
  const std::optional<Whole> bottom = WholeProduct(a.bottom / common, b.bottom);
  if (!left || !right || !bottom) return std::nullopt;
  const std::optional<Whole> top = WholeSum(*left, *right);
  if (!top) return std::nullopt;
  return Reduced(*top, *bottom);
}

std::optional<Ratio> Product(const Ratio& a, const Ratio& b) {
  const Ratio left = Reduced(a.top, b.bottom);
  const Ratio right = Reduced(b.top, a.bottom);
  const std::optional<Whole> top = WholeProduct(left.top, right.top);
  const std::optional<Whole> bottom = WholeProduct(left.bottom, right.bottom);
  if (!top || !bottom) return std::nullopt;
  return Ratio{*top, *bottom};
}

std::optional<Ratio> Inverse(const Ratio& ratio) {
  if (ratio.top == 0) return std::nullopt;
  if (ratio.top > 0) return Ratio{ratio.bottom, ratio.top};
  return Ratio{-ratio.bottom, -ratio.top};
}

Ratio Negative(const Ratio& ratio) { return {-ratio.top, ratio.bottom}; }

}  // namespace rux::imports
