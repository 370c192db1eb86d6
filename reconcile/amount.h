// The numbers of a list, and what they are to a machine.
#ifndef RECONCILE_AMOUNT_H_
#define RECONCILE_AMOUNT_H_

#include <cstdint>
#include <optional>
#include <string>

#include "machine/machine.h"
#include "reconcile/pairing.h"

namespace rux::reconcile {

// "95", "1.05 V", "0x1F"
struct Amount {
  double number;
  std::string unit;  // empty: none is written
};

// None when the text is anything else.
std::optional<Amount> AmountIn(const std::string& text);

// The amount as a machine stores such numbers, before it is cut to a whole number. `unit`: of the
// list, when the amount does not have one. None when the machine measures in another unit.
std::optional<double> StoredAmount(const Amount& amount, const std::string& unit,
                                   const machine::Quantity& quantity);

// Whether the machine's number is as good as the list's. Where the sign of the machine's is not
// known, it is that of the other one.
bool IsWithin(std::uint32_t stored, double wanted, const Tolerance& tolerance,
              const machine::Quantity& quantity);

// The number to store for an amount that the list has as `text`; none when no number is that
// amount.
std::optional<std::uint32_t> NumberToStore(double wanted, const std::string& text,
                                           const machine::Quantity& quantity);

}  // namespace rux::reconcile

#endif  // RECONCILE_AMOUNT_H_
