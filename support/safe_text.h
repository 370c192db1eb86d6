// Bytes from files, made fit for people.
#ifndef SUPPORT_SAFE_TEXT_H_
#define SUPPORT_SAFE_TEXT_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "support/utf8.h"

namespace rux::support {

// "0AFF"; or, with a lead, "\x0A\xFF".
std::string Hex(std::string_view bytes, std::string_view lead = "");

// The text as it can be shown: a name can neither break lines, nor steer the terminal, nor look
// like another one. Shown as \xNN, byte by byte, are control characters (U+0000 to U+001F, U+007F
// to U+009F), format characters that cannot be seen or turn the direction of writing (U+200B to
// U+200F, U+202A to U+202E, U+2060 to U+2064, U+2066 to U+2069, U+FEFF), and bytes that are no
// UTF-8.
std::string SafeText(std::string_view text);

// The same for source lines, which keep their tabs.
std::string SafeLine(std::string_view line);

// How many columns of a terminal a character, or a text, takes once it is made safe; of a text,
// tabs count as what SafeText() makes of them.
std::size_t Columns(const Character& character);
std::size_t Columns(std::string_view text);

// The text, or the beginning of a long one and "...".
std::string Shortened(std::string_view text);

// A name as the path of a query holds it: the name itself, or in double quotes (those inside
// doubled) when it could not be told from the rest of the path.
std::string NameInPath(std::string_view name);

// The same for people. What SafeText() has to change is quoted, and cannot be typed back.
std::string NameText(std::string_view name);

// Whether shells can be offered the text: as SafeText() leaves it, but for bytes from A0 on that
// are no UTF-8, which are letters in older encodings.
bool CanBeTyped(std::string_view text);

}  // namespace rux::support

#endif  // SUPPORT_SAFE_TEXT_H_
