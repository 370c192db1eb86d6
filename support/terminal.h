// What standard output and error are shown on.
#ifndef SUPPORT_TERMINAL_H_
#define SUPPORT_TERMINAL_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace rux::support {

// The columns of text for people: as many as COLUMNS says, or the terminal that standard output is,
// or 80. Never fewer than 20.
std::size_t TextWidth();

// The columns of the terminal that standard error is, for a line that is erased again; zero when it
// is none, or one that cannot erase.
std::size_t StatusWidth();

// Prints a text as it is. Throws a Failure of wrong usage when standard output is a terminal that
// the text could control; `what` is the text ("the script"), `advice` what to do about it.
void PrintAsIs(std::string_view what, std::string_view text, std::string_view advice);

// Whether what goes to the descriptor is in colours, for a value of --color: "auto", "always" or
// "never".
bool UsesColour(const std::string& color, int descriptor);

// The text in bold, if colours are used.
std::string Bold(std::string_view text, bool uses_colour);

// How standard output shows what both people and programs read.
struct OutputStyle {
  std::size_t width;  // of a line; kEndless (wrap.h) when standard output is not a terminal
  bool uses_colour;
};

// For a value of --color.
OutputStyle StyleOfOutput(const std::string& color);

}  // namespace rux::support

#endif  // SUPPORT_TERMINAL_H_
