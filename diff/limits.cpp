#include "diff/limits.h"

#include <cstdint>
#include <optional>

#include "diff/classes.h"
#include "ruxcomp/language/entries.h"

namespace rux::diff {
namespace {

// With its sign, which is known.
std::int64_t SignedNumber(const Amount& amount) {
  return *amount.quantity.is_signed ? std::int64_t{static_cast<std::int32_t>(*amount.number)}
                                    : std::int64_t{*amount.number};
}

// -1, 0 or 1; none when the amounts are not of one kind.
std::optional<int> Compared(const Amount& before, const Amount& after) {
  const machine::Quantity& a = before.quantity;
  const machine::Quantity& b = after.quantity;
  const bool are_known = before.number && after.number && a.is_signed && b.is_signed;
  if (!are_known || a.unit != b.unit || a.divisor.has_value() != b.divisor.has_value())
    return std::nullopt;
  // Over the product of the divisors: all of them have 32 bits.
  using Exact = long double;
  const Exact left =
      static_cast<Exact>(SignedNumber(before)) * static_cast<Exact>(b.divisor.value_or(1));
  const Exact right =
      static_cast<Exact>(SignedNumber(after)) * static_cast<Exact>(a.divisor.value_or(1));
  return left < right ? -1 : static_cast<int>(left > right);
}

}  // namespace

std::optional<ClassId> ClassOfLimit(language::LimitSide side, const Amount& before,
                                    const Amount& after) {
  if (before.number == after.number && before.quantity == after.quantity) return std::nullopt;
  const std::optional<int> compared = Compared(before, after);
  if (!compared) return ClassId::kLimitChanged;
  if (*compared == 0) return std::nullopt;
  const bool grows = *compared < 0;
  return grows == (side == language::LimitSide::kMost) ? ClassId::kLimitLoosened
                                                       : ClassId::kLimitTightened;
}

}  // namespace rux::diff
