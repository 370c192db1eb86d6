// The text of headers and items, without their comments.
#ifndef FORMAT_ITEM_TEXT_H_
#define FORMAT_ITEM_TEXT_H_

#include <cstddef>
#include <string>

#include "reader/syntax_tree.h"

namespace rux::format {

// "[SENSOR]"
void AppendHeader(std::string& text, const ruxcomp::reader::SyntaxTree& tree,
                  const ruxcomp::reader::SyntaxLine& line);

// "ID   = 0x1A, 2, \", the line end, and on the next line what follows it. `equals`: the column of
// the '='; of an item without one, nothing.
void AppendItem(std::string& text, const ruxcomp::reader::SyntaxTree& tree,
                const ruxcomp::reader::SyntaxLine& line, std::size_t equals);

}  // namespace rux::format

#endif  // FORMAT_ITEM_TEXT_H_
