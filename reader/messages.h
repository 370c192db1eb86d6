// What the reader says about a script, and how it is said.
#ifndef READER_MESSAGES_H_
#define READER_MESSAGES_H_

#include <cstdint>
#include <string>

namespace reader {

// printf formats for the script's base name and a line number.
inline constexpr char kTextBeforeSection[] =
    "Error[%s:%u]: Text before the first section is ignored.\n";
inline constexpr char kHeaderNotClosed[] = "Error[%s:%u]: Section header is not closed.\n";
inline constexpr char kTextAfterHeader[] =
    "Error[%s:%u]: Text after the section header is ignored.\n";
inline constexpr char kNoKey[] = "Error[%s:%u]: Entry has no key.\n";
inline constexpr char kQuoteNotClosed[] = "Error[%s:%u]: Double quote is not closed.\n";
inline constexpr char kNulByte[] = "Error[%s:%u]: NUL bytes are ignored.\n";

// About the script as a whole; told with line 1.
inline constexpr char kTooManyOpen[] = "Error[%s:%u]: Too many scripts include one another.\n";
inline constexpr char kTooLarge[] = "Error[%s:%u]: Script is too large.\n";
inline constexpr char kOutOfMemory[] = "Error[%s:%u]: Script does not fit into memory.\n";

// Passes one of the texts above to the function Output of the host program; without one, nothing
// happens. The base name is what follows the last backslash of the path.
void Report(const std::string& path, const char* message, std::uint32_t line);

}  // namespace reader

#endif  // READER_MESSAGES_H_
