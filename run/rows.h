// The messages about a run that are not the library's.
#ifndef RUN_ROWS_H_
#define RUN_ROWS_H_

#include "findings/message_row.h"

namespace rux::run {

#define MESSAGE(name, format, id, severity, ...)                                             \
  inline constexpr findings::MessageRow k##name = {format, id, findings::Severity::severity, \
                                                   __VA_ARGS__};
#include "run/rows.def"

inline constexpr const findings::MessageRow* kRows[] = {
#define MESSAGE(name, ...) &k##name,
#include "run/rows.def"
};

}  // namespace rux::run

#endif  // RUN_ROWS_H_
