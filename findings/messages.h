// The messages by name, their formats as constants, and the size that goes with them.
#ifndef FINDINGS_MESSAGES_H_
#define FINDINGS_MESSAGES_H_

#include <cstdint>

namespace ruxcomp::findings {

// The first argument of Output, with every message: the size that a host may give the formatted
// text. Part of the interface, pinned by tests/api.
inline constexpr unsigned int kOutputSize = 2048;

// In the order of messages.def.
enum class MessageId : std::uint16_t {
#define MESSAGE(name, format, ...) k##name,
#include "findings/messages.def"
};

// Message<MessageId::kUndefinedWord>::kFormat is a constant, so that the compiler checks every
// argument against it and a program contains only the formats that it uses.
template <MessageId Id>
struct Message;
#define MESSAGE(name, format, ...)            \
  template <>                                 \
  struct Message<MessageId::k##name> {        \
    static constexpr char kFormat[] = format; \
  };
#include "findings/messages.def"

}  // namespace ruxcomp::findings

#endif  // FINDINGS_MESSAGES_H_
