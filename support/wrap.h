// Texts in lines that fit a terminal.
#ifndef SUPPORT_WRAP_H_
#define SUPPORT_WRAP_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace rux::support {

// The columns of text for people: as many as COLUMNS says, or the terminal that standard output is,
// or 80. Never fewer than 20.
std::size_t TextWidth();

// The text in lines of up to `width` columns, broken at blanks. `column` is where the text begins;
// lines after the first are indented that far. A longer word has a line of its own.
std::string Wrapped(std::string_view text, std::size_t width, std::size_t column = 0);

// The same for items, which stay whole, separated by commas.
std::string WrappedList(const std::vector<std::string>& items, std::size_t width,
                        std::size_t column);

}  // namespace rux::support

#endif  // SUPPORT_WRAP_H_
