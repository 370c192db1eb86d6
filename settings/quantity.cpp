#include "settings/quantity.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "ruxcomp/language/number.h"
#include "settings/limit_rule.h"
#include "support/number_text.h"

namespace rux::settings {
namespace {

// What the sensor itself says counts more.
std::string TextFrom(const SensorTraits& sensor, const std::string& property,
                     const std::string& common) {
  const std::string own = property.empty() ? std::string() : sensor.property(property);
  return own.empty() ? common : own;
}

void Complete(Quantity& quantity, const LimitRule& rule, const SensorTraits& sensor) {
  if (!quantity.unit) {
    const std::string unit = TextFrom(sensor, rule.unit_property, rule.unit);
    if (!unit.empty()) quantity.unit = unit;
  }
  if (!quantity.divisor) {
    const std::string own = TextFrom(sensor, rule.divisor_property, "");
    const std::uint64_t divisor =
        own.empty() ? rule.divisor : ruxcomp::language::ReadNumber(own).value;
    if (divisor != 0) quantity.divisor = divisor;
  }
  if (!quantity.is_signed) {
    const std::string sign = TextFrom(sensor, rule.sign_property, rule.sign);
    if (sign == kSigned || sign == kUnsigned) quantity.is_signed = sign == kSigned;
  }
}

// Exactly, where a few decimals do, and otherwise with so many that each number has a text of its
// own.
std::string QuotientText(std::int64_t number, std::uint64_t divisor) {
  const auto magnitude = static_cast<std::uint64_t>(number < 0 ? -number : number);
  std::string text = (number < 0 ? "-" : "") + std::to_string(magnitude / divisor);
  std::uint64_t rest = magnitude % divisor;
  constexpr std::size_t kMostDecimals = 10;
  for (std::size_t i = 0; rest != 0 && i < kMostDecimals; ++i) {
    if (i == 0) text += '.';
    text += static_cast<char>('0' + rest * 10 / divisor);
    rest = rest * 10 % divisor;
  }
  return text;
}

}  // namespace

std::string Quantity::TextOf(std::uint32_t number) const {
  const std::string after = unit ? ' ' + *unit : "";
  if (!is_signed && number >> 31 != 0) return support::NumberText(number) + after;
  return AmountText(number) + after;
}

std::int64_t Quantity::SignedNumber(std::uint32_t number) const {
  return is_signed.value_or(false) ? static_cast<std::int32_t>(number)
                                   : static_cast<std::int64_t>(number);
}

std::string Quantity::AmountText(std::uint32_t number) const {
  return QuotientText(SignedNumber(number), divisor.value_or(1));
}

Quantity QuantityOf(const std::vector<LimitRule>& rules, const SensorTraits& sensor) {
  Quantity quantity;
  for (const LimitRule& rule : rules) {
    if (Fits(rule, sensor.name, sensor.type)) Complete(quantity, rule, sensor);
  }
  return quantity;
}

}  // namespace rux::settings
