#include "reconcile/amount.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "lists/list.h"
#include "lists/units.h"
#include "machine/machine.h"
#include "reconcile/pairing.h"
#include "table/cell.h"

namespace rux::reconcile {
namespace {

// Programs print decimals of binary numbers: 1.8800000000000001.
constexpr double kRounding = 1e-6;

bool IsNegative(double wanted, const machine::Quantity& quantity) {
  return quantity.is_signed.value_or(wanted < 0);
}

double NumberOf(std::uint32_t stored, bool has_sign) {
  return has_sign ? static_cast<double>(static_cast<std::int32_t>(stored))
                  : static_cast<double>(stored);
}

}  // namespace

std::optional<Amount> AmountIn(const std::string& text) {
  const std::optional<table::LeadingNumber> leading = table::LeadingNumberIn(lists::Trimmed(text));
  if (!leading) return std::nullopt;
  const std::string_view unit = lists::Trimmed(leading->rest);
  // "1,5", "1-2" and "0 x1" are mistakes, not units.
  constexpr std::string_view kNoUnits = "0123456789+-.,;:xX";
  if (!unit.empty() && kNoUnits.find(unit.front()) != std::string_view::npos) return std::nullopt;
  return Amount{leading->number, std::string(unit)};
}

std::optional<double> StoredAmount(const Amount& amount, const std::string& unit,
                                   const machine::Quantity& quantity) {
  const std::string& from = amount.unit.empty() ? unit : amount.unit;
  double factor = 1;
  if (quantity.unit && !from.empty()) {
    const std::optional<double> known = lists::UnitFactor(from, *quantity.unit);
    if (!known) return std::nullopt;
    factor = *known;
  }
  return amount.number * factor * static_cast<double>(quantity.divisor.value_or(1));
}

bool IsWithin(std::uint32_t stored, double wanted, const Tolerance& tolerance,
              const machine::Quantity& quantity) {
  const double own = NumberOf(stored, IsNegative(wanted, quantity));
  const double allowed = tolerance.amount * static_cast<double>(quantity.divisor.value_or(1)) +
                         tolerance.share * std::fabs(own);
  return std::fabs(own - wanted) <= allowed + kRounding;
}

std::optional<std::uint32_t> NumberToStore(double wanted, const std::string& text,
                                           const machine::Quantity& quantity) {
  const bool has_sign = IsNegative(wanted, quantity);
  const double whole = std::round(wanted);
  const double least = has_sign ? std::numeric_limits<std::int32_t>::min() : 0;
  const double most = has_sign ? std::numeric_limits<std::int32_t>::max()
                               : std::numeric_limits<std::uint32_t>::max();
  if (whole < least || whole > most) return std::nullopt;
  const auto number = static_cast<std::uint32_t>(static_cast<std::int64_t>(whole));
  const bool is_exact = std::fabs(whole - wanted) <= kRounding;
  if (is_exact || quantity.AmountText(number) == text) return number;
  return std::nullopt;
}

}  // namespace rux::reconcile
