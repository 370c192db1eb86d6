// How the reader reports what is wrong with a script.
#ifndef READER_MESSAGES_H_
#define READER_MESSAGES_H_

#include <cstdint>
#include <string>

#include "findings/messages.h"
#include "findings/origin.h"

namespace ruxcomp::reader {

using findings::MessageId;

// The printf format of one of the messages of findings/messages/script_text.def; empty for others.
const char* FormatOf(MessageId message);

// Reports one of the messages of findings/messages/script_text.def: to the sink of the process if
// there is one, else to the function Output of the host program if there is one. The place is the
// base name of the path, which is what follows its last backslash, and the line. `origin` names the
// script if it is known.
void Report(const std::string& path, MessageId message, std::uint32_t line,
            const findings::Origin& origin = {});

}  // namespace ruxcomp::reader

#endif  // READER_MESSAGES_H_
