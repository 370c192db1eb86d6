// The rules of style by name.
#ifndef LINT_LINT_ROWS_H_
#define LINT_LINT_ROWS_H_

#include <cstddef>

#include "findings/message_row.h"

namespace rux::lint {

// In the order of the rows of lint_rows.def.
enum class RuleId {
#define RULE(name, ...) k##name,
#include "lint/rows/lint_rows.def"
};

namespace rows {
#define RULE(name, id, summary, ...)                         \
  inline constexpr ruxcomp::findings::MessageRow k##name = { \
      "", id, ruxcomp::findings::Level::kStyle, summary, __VA_ARGS__};
#include "lint/rows/lint_rows.def"
}  // namespace rows

// By RuleId.
inline constexpr const ruxcomp::findings::MessageRow* kRows[] = {
#define RULE(name, ...) &rows::k##name,
#include "lint/rows/lint_rows.def"
};

constexpr const ruxcomp::findings::MessageRow& RowOf(RuleId rule) {
  return *kRows[static_cast<std::size_t>(rule)];
}

}  // namespace rux::lint

#endif  // LINT_LINT_ROWS_H_
