// Exact quotients of whole numbers.
#ifndef IMPORTS_FORMATS_RATIO_H_
#define IMPORTS_FORMATS_RATIO_H_

#include <cstdint>
#include <optional>
#include <string>

#include "imports/decimal.h"

namespace rux::imports {

// In lowest terms.
struct Ratio {
  std::int64_t top = 0;
  std::int64_t bottom = 1;  // positive

  bool operator==(const Ratio& other) const { return top == other.top && bottom == other.bottom; }

  std::string Text() const;  // "53/8", "4"
};

// None where a result has more than 64 bits, and of a division by zero.
std::optional<Ratio> RatioOf(const Decimal& number);
std::optional<Ratio> Sum(const Ratio& a, const Ratio& b);
std::optional<Ratio> Product(const Ratio& a, const Ratio& b);
std::optional<Ratio> Inverse(const Ratio& ratio);

Ratio Negative(const Ratio& ratio);

}  // namespace rux::imports

#endif  // IMPORTS_FORMATS_RATIO_H_
