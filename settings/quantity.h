// What the limits of a sensor are numbers of.
#ifndef SETTINGS_QUANTITY_H_
#define SETTINGS_QUANTITY_H_

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/limit_rule.h"

namespace rux::settings {

// What is not stated is not known.
struct Quantity {
  std::optional<std::string> unit;
  std::optional<std::uint64_t> divisor;  // of the number, for the amount in the unit
  std::optional<bool> is_signed;

  bool operator==(const Quantity& other) const {
    return unit == other.unit && divisor == other.divisor && is_signed == other.is_signed;
  }

  // The number with the sign that it has. Without a known sign, not below 0.
  std::int64_t SignedNumber(std::uint32_t number) const;
  // The amount that a stored number is: "-5 C", "1.05 V". Without a known sign, the number as it is
  // stored.
  std::string TextOf(std::uint32_t number) const;
  // The same without the unit, and as one number: "-5", "1.05". Without a known sign, not below 0.
  std::string AmountText(std::uint32_t number) const;
};

struct SensorTraits {
  std::string_view name;
  std::optional<std::uint64_t> type;
  // The text of its property of that name, without P_; empty: it has none.
  std::function<std::string(const std::string& name)> property;
};

// What the rules and the sensor's properties state.
Quantity QuantityOf(const std::vector<LimitRule>& rules, const SensorTraits& sensor);

}  // namespace rux::settings

#endif  // SETTINGS_QUANTITY_H_
