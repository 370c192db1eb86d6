// Decimal numbers as sources write them, exactly.
#ifndef IMPORTS_DECIMAL_H_
#define IMPORTS_DECIMAL_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace rux::imports {

// digits times ten to the power of the exponent, without a zero at the end of the digits: a number
// has one form.
class Decimal {
 public:
  Decimal() = default;
  Decimal(std::int64_t digits, int exponent);

  // "10.8", "-5", "1.05e-3", "0x1F"; with nothing before or after. None for any other text, and for
  // numbers of more than 18 digits or beyond 10^±60.
  static std::optional<Decimal> In(std::string_view text);
  // Whether the text is a number in such a form, however many digits it has.
  static bool IsNumber(std::string_view text);
  // Of a whole number by another one, where a decimal number is that; the divisor is not 0.
  static std::optional<Decimal> Quotient(std::int64_t dividend, std::int64_t divisor);

  // None when the product does not fit.
  std::optional<Decimal> Times(const Decimal& other) const;
  // The number times ten to that power, when that is a whole one that fits.
  std::optional<std::int64_t> WholeAt(int power) const;

  std::string Text() const;  // "0.00105"

  std::int64_t digits() const { return digits_; }
  int exponent() const { return exponent_; }
  bool operator==(const Decimal& other) const {
    return digits_ == other.digits_ && exponent_ == other.exponent_;
  }

 private:
  std::int64_t digits_ = 0;
  int exponent_ = 0;
};

}  // namespace rux::imports

#endif  // IMPORTS_DECIMAL_H_
