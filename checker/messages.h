// The texts of the messages that checking a script gives.
#ifndef CHECKER_MESSAGES_H_
#define CHECKER_MESSAGES_H_

namespace msg {

#define MESSAGE(name, text) inline constexpr char name[] = text;
#include "checker/messages.def"

}  // namespace msg

#endif  // CHECKER_MESSAGES_H_
