// Where something is in a line on the screen.
#ifndef FORMAT_COLUMNS_H_
#define FORMAT_COLUMNS_H_

#include <cstddef>
#include <string_view>

namespace rux::format {

// The column, from 0, after a text that begins in one. A tab leads to the next multiple of eight.
std::size_t ColumnAfter(std::string_view text, std::size_t column = 0);

}  // namespace rux::format

#endif  // FORMAT_COLUMNS_H_
