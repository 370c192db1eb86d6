// What the reader says about a script, and how it is said.
#ifndef READER_MESSAGES_H_
#define READER_MESSAGES_H_

#include <cstdint>
#include <string>

#include "findings/messages.h"

namespace reader {

// The reader's messages, printf formats for the script's base name and a line number, are rows of
// findings/messages/reading.def.
template <findings::MessageId Id>
inline constexpr const char* kFormat = findings::Message<Id>::kFormat;
using findings::MessageId;

// Passes such a format to the function Output of the host program; without one, nothing
// happens. The base name is what follows the last backslash of the path.
void Report(const std::string& path, const char* message, std::uint32_t line);

}  // namespace reader

#endif  // READER_MESSAGES_H_
