// The texts of the messages that writing and reading a debug meta file gives.
#ifndef DEBUGMETA_MESSAGES_H_
#define DEBUGMETA_MESSAGES_H_

namespace msg {

#define MESSAGE(name, text) inline constexpr char name[] = text;
#include "debugmeta/messages.def"

}  // namespace msg

#endif  // DEBUGMETA_MESSAGES_H_
