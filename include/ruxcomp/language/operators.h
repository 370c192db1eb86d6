// The operators of a calculation.
#ifndef RUXCOMP_LANGUAGE_OPERATORS_H_
#define RUXCOMP_LANGUAGE_OPERATORS_H_

#include <cstdint>
#include <string_view>

#include "ruxcomp/language/rows.h"

namespace ruxcomp::language {

struct Operator {
  std::string_view text;
  std::uint32_t code;
};

inline constexpr Operator kOperators[] = {
#define OPERATOR(text, code) {text, code},
#include "ruxcomp/language/operators.def"
};

inline constexpr std::uint32_t kFirstComparison = 101;
constexpr bool IsComparison(std::uint32_t code) { return code >= kFirstComparison; }

// The operator of that text, or of that code; null when there is none.
constexpr const Operator* FindOperator(std::string_view text) {
  return FindRow(kOperators, [&](const Operator& row) { return row.text == text; });
}
constexpr const Operator* FindOperator(std::uint32_t code) {
  return FindRow(kOperators, [&](const Operator& row) { return row.code == code; });
}

// The code of an operator; 0 for any other text.
constexpr std::uint32_t OperatorCode(std::string_view text) {
  const Operator* row = FindOperator(text);
  return row != nullptr ? row->code : 0;
}

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_OPERATORS_H_
