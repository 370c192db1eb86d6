// The messages by name, and their formats as constants.
#ifndef FINDINGS_MESSAGES_H_
#define FINDINGS_MESSAGES_H_

#include <cstdint>

namespace ruxcomp::findings {

// In the order of messages.def.
enum class MessageId : std::uint16_t {
#define MESSAGE(name, format, ...) k##name,
#include "findings/messages.def"
};

// Message<MessageId::kUndefinedWord>::kFormat is a constant, so that the compiler checks every
// argument against it and a program contains the formats that it uses and no others.
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
