// Bytes from files, made safe to show.
#ifndef SUPPORT_SAFE_TEXT_H_
#define SUPPORT_SAFE_TEXT_H_

#include <fmt/core.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

#include "support/utf8.h"

namespace rux::support {

// "0AFF"; or, with a lead, "\x0A\xFF".
std::string Hex(std::string_view bytes, std::string_view lead = "");

// False for control characters, format characters (those that turn the direction of writing are
// among them), separators of lines and paragraphs, blanks that only look like the common one, what
// Unicode makes invisible or keeps for other uses, and bytes that are not UTF-8.
bool IsSafe(const Character& character);

// The text as it can be shown: a name can neither break lines, nor steer the terminal, nor look
// like another one. What is not safe is shown as \xNN, byte by byte. A text that was made safe
// stays as it is.
std::string SafeText(std::string_view text);

// The same for source lines, which keep their tabs.
std::string SafeLine(std::string_view line);

// Whether that leaves all lines of a text, which end in LF or CRLF, as they are.
bool AreSafeLines(std::string_view text);

// SafeText() for a path that begins a line. Lines that begin with "::" are commands to some
// services that run builds; such a path gets "./" before it.
std::string SafePath(std::string_view path);

template <class Value>
auto MadeSafe(const Value& value) {
  if constexpr (std::is_arithmetic_v<Value>) {
    return value;
  } else {
    return SafeText(value);
  }
}

// The format, a text of the program's own, with the values in place of each {}: texts among them
// are made safe.
template <std::size_t kSize, class... Values>
std::string SafeFormat(const char (&format)[kSize], const Values&... values) {
  return fmt::format(fmt::runtime(format), MadeSafe(values)...);
}

// How many columns of a terminal a character, or a text, takes once it is made safe; of a text,
// tabs count as what SafeText() makes of them.
std::size_t Columns(const Character& character);
std::size_t Columns(std::string_view text);

// The text, or the beginning of a long one and "...".
std::string Shortened(std::string_view text);

// The same with much more of it, where programs may want the whole. A text of a script may be as
// long as the script: it is not kept for each message about it.
std::string Excerpted(std::string_view text);

// A name as the path of a query holds it: the name itself, or in double quotes (those inside
// doubled) when it could be mistaken for the rest of the path.
std::string NameInPath(std::string_view name);

// The same to be shown. What SafeText() has to change is quoted, and cannot be typed back.
std::string NameText(std::string_view name);

// Whether shells can be offered the text: as SafeText() leaves it, but for bytes from A0 on that
// are no UTF-8, which are letters in older encodings.
bool CanBeTyped(std::string_view text);

}  // namespace rux::support

#endif  // SUPPORT_SAFE_TEXT_H_
