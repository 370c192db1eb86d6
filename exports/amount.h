// Exact amounts: what stored numbers measure.
#ifndef EXPORTS_AMOUNT_H_
#define EXPORTS_AMOUNT_H_

#include <cstdint>
#include <string>

namespace rux::exports {

// number / divisor * 10^exponent
struct Amount {
  std::int64_t number = 0;
  std::uint64_t divisor = 1;
  int exponent = 0;

  // Whether a decimal number is exactly the amount: false for a third.
  bool IsDecimal() const;
  // In decimal, without an exponent or zeros at the end: "-0.05", "12600". For an amount
  // that no decimal number is, enough digits to give each number a text of its own.
  std::string Text() const;
};

}  // namespace rux::exports

#endif  // EXPORTS_AMOUNT_H_
