// Texts in lines that fit a terminal.
#ifndef SUPPORT_WRAP_H_
#define SUPPORT_WRAP_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace rux::support {

// The width of lines that are not broken.
inline constexpr std::size_t kEndless = static_cast<std::size_t>(-1);

// Appends a text to pieces of a list, with a comma after the one before.
void AddToList(std::vector<std::string>& pieces, std::string text);

// The text in lines of up to `width` columns, broken at blanks. `column` is where the text begins;
// lines after the first are indented that far. A longer word has a line of its own.
std::string Wrapped(std::string_view text, std::size_t width, std::size_t column = 0);

// The same for pieces of text, which stay whole.
std::string WrappedPieces(const std::vector<std::string>& pieces, std::size_t width,
                          std::size_t column);

// The same for pieces that begin a line; those after it are indented by `indent`.
std::string WrappedLine(const std::vector<std::string>& pieces, std::size_t width,
                        std::size_t indent);

// A line for each text, or several in a line where they fit; those go down the columns. `shown` are
// the texts as they are printed, which may be in colours.
std::string InColumns(const std::vector<std::string>& texts, const std::vector<std::string>& shown,
                      std::size_t width);

}  // namespace rux::support

#endif  // SUPPORT_WRAP_H_
