// The texts of the messages that reading a script gives.
#ifndef FRONTEND_MESSAGES_H_
#define FRONTEND_MESSAGES_H_

namespace msg {

#define MESSAGE(name, text) inline constexpr char name[] = text;
#include "frontend/messages.def"

}  // namespace msg

#endif  // FRONTEND_MESSAGES_H_
