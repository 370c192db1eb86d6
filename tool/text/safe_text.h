// Bytes from files, made fit for a terminal.
#ifndef TOOL_TEXT_SAFE_TEXT_H_
#define TOOL_TEXT_SAFE_TEXT_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace rux {

// The text with its control bytes shown as \xNN, so that a name can neither break lines nor steer
// the terminal. Bytes above 127 are left alone.
std::string SafeText(std::string_view text);

// The same for source lines, which keep their tabs.
std::string SafeLine(std::string_view line);

// How many columns a text takes that has no tabs, once it is made safe. Every character of UTF-8
// counts as one.
std::size_t Columns(std::string_view text);

}  // namespace rux

#endif  // TOOL_TEXT_SAFE_TEXT_H_
