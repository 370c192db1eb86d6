// Empty lines between sections, and none too many.
#ifndef FORMAT_BLANK_LINES_H_
#define FORMAT_BLANK_LINES_H_

#include <string>
#include <vector>

#include "reader/syntax_tree.h"

namespace rux::format {

// The texts of the tree's lines, formatted, as one: an empty line comes before each section with
// the comment lines directly above its header, one at most anywhere else, and none at the beginning
// and at the end. Among untouched lines, they stay as they are.
std::string WithBlankLines(const ruxcomp::reader::SyntaxTree& tree,
                           const std::vector<std::string>& lines,
                           const std::vector<bool>& untouched);

}  // namespace rux::format

#endif  // FORMAT_BLANK_LINES_H_
