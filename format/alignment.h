// The lines of a script, with what is in columns.
//
// The items of a section up to an empty line are a run. Their '=' are in one column, one blank
// after the longest key.
//
// A comment after an item or header stays in its column. Where the item needs the room, it moves to
// the right, with all comments of its run that began in the same column. The comment lines below it
// that begin in that column belong to it; all others begin at the left.
#ifndef FORMAT_ALIGNMENT_H_
#define FORMAT_ALIGNMENT_H_

#include <string>
#include <vector>

#include "reader/syntax_tree.h"

namespace rux::format {

// The texts of all lines of the tree, with their line ends; without a byte order mark. `untouched`:
// which stay as they are.
std::vector<std::string> AlignedLines(const ruxcomp::reader::SyntaxTree& tree,
                                      const std::vector<bool>& untouched);

}  // namespace rux::format

#endif  // FORMAT_ALIGNMENT_H_
