// Amounts as the whole numbers that scripts have.
#ifndef IMPORTS_SCALE_H_
#define IMPORTS_SCALE_H_

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "imports/board.h"

namespace rux::imports {

// The numbers are the amounts times ten to the power.
struct Scale {
  int power = 0;
  bool is_signed = true;  // false: numbers from 2^31 on are not negative
};

// The number of a script that is exactly that amount, if any number is; -1 is none, for hosts
// cannot look it up.
std::optional<std::string> NumberFor(const Decimal& amount, const Scale& scale);

struct ScaledLimits {
  Scale scale;
  std::vector<std::size_t> fitting;  // their places; for the others, no scale does
};

// The largest unit that keeps all limits exact: whole ones, thousandths, millionths or billionths
// or, where such numbers would be too large, another decimal fraction. A limit that has none in
// common with those before it does not fit.
ScaledLimits ScaleFor(const std::vector<Limit>& limits);

}  // namespace rux::imports

#endif  // IMPORTS_SCALE_H_
