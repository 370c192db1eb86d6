// What the reader says about a script, and how it is said.
#ifndef READER_MESSAGES_H_
#define READER_MESSAGES_H_

#include <cstdint>
#include <string>

namespace reader {

// The texts: printf formats for the script's base name and a line number.
#define MESSAGE(name, text) inline constexpr char name[] = text;
#include "reader/messages.def"

// Passes one of the texts above to the function Output of the host program; without one, nothing
// happens. The base name is what follows the last backslash of the path.
void Report(const std::string& path, const char* message, std::uint32_t line);

}  // namespace reader

#endif  // READER_MESSAGES_H_
