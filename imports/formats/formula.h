// The formulas of sensors.conf.
#ifndef IMPORTS_FORMATS_FORMULA_H_
#define IMPORTS_FORMATS_FORMULA_H_

#include <cstddef>
#include <optional>
#include <string>

#include "imports/formats/conf_lines.h"
#include "imports/formats/ratio.h"
#include "losses/ledger.h"

namespace rux::imports {

// factor * @ + offset: @ is what the formula is applied to.
struct Formula {
  Ratio factor;
  Ratio offset;
  // Why it is not of that form: exp or ln, @ * @, names of readings, a division by zero, a number
  // of more than 64 bits.
  std::optional<losses::Reason> hindrance;

  bool IsPlain() const { return !hindrance; }
  bool IsNumber() const { return IsPlain() && factor == Ratio{}; }
};

inline constexpr int kDeepestFormula = 100;

// Reads a formula from token `at` of the line on, and leaves `at` after it. Throws a Failure that
// names the line of what is not a formula, or nested deeper than kDeepestFormula.
Formula ReadFormula(const std::string& path, const ConfLine& line, std::size_t& at);

// Whether the second formula undoes the first.
bool AreOpposite(const Formula& formula, const Formula& other);

}  // namespace rux::imports

#endif  // IMPORTS_FORMATS_FORMULA_H_
