// Bytes from files, made fit for a terminal.
#ifndef SUPPORT_SAFE_TEXT_H_
#define SUPPORT_SAFE_TEXT_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace rux::support {

// The text with its control characters shown as \xNN, so that a name can neither break lines nor
// steer the terminal. Those above 127 count as well, in UTF-8 and as single bytes that belong to no
// character of UTF-8; other bytes above 127 are left alone.
std::string SafeText(std::string_view text);

// The same for source lines, which keep their tabs.
std::string SafeLine(std::string_view line);

// The text, or the beginning of a long one and "...".
std::string Shortened(std::string_view text);

// What a text that is not empty begins with: a character of UTF-8, or a byte that belongs to none.
std::string_view FirstCharacter(std::string_view text);

// Whether the byte goes on with a character of UTF-8 instead of beginning one.
bool IsInsideCharacter(char c);

// How many columns a text takes that has no tabs, once it is made safe. Every character of UTF-8
// counts as one.
std::size_t Columns(std::string_view text);

}  // namespace rux::support

#endif  // SUPPORT_SAFE_TEXT_H_
