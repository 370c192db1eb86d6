// The rows of messages.def as objects.
#ifndef FINDINGS_MESSAGE_ROWS_H_
#define FINDINGS_MESSAGE_ROWS_H_

#include <cstddef>

#include "findings/message_row.h"
#include "findings/messages.h"
#include "findings/wording.h"

namespace ruxcomp::findings {

namespace rows {
#define MESSAGE(name, format, wording, id, level, ...)                                    \
  inline constexpr MessageRow k##name = {format, id, Level::level, __VA_ARGS__, wording}; \
  static_assert(FitsFormat(wording, format), "the wording of " #name " names its arguments");
#include "findings/messages.def"
}  // namespace rows

// By MessageId.
inline constexpr const MessageRow* kRows[] = {
#define MESSAGE(name, ...) &rows::k##name,
#include "findings/messages.def"
};

constexpr const MessageRow& RowOf(MessageId id) { return *kRows[static_cast<std::size_t>(id)]; }

}  // namespace ruxcomp::findings

#endif  // FINDINGS_MESSAGE_ROWS_H_
