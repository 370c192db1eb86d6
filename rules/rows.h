// The messages of the rules.
#ifndef RULES_ROWS_H_
#define RULES_ROWS_H_

#include "findings/message_row.h"

namespace rux::rules {

#define ROW(name, id, severity, format, ...)                                                 \
  inline constexpr findings::MessageRow k##name = {format, id, findings::Severity::severity, \
                                                   __VA_ARGS__};
#include "rules/rows.def"

inline constexpr const findings::MessageRow* kRows[] = {
#define ROW(name, ...) &k##name,
#include "rules/rows.def"
};

}  // namespace rux::rules

#endif  // RULES_ROWS_H_
