// Whether formatting left everything but the looks.
#ifndef FORMAT_SAME_MEANING_H_
#define FORMAT_SAME_MEANING_H_

#include "reader/syntax_tree.h"

namespace rux::format {

// Whether both have the same sections, keys and comments, and deliver the same values but for the
// case of digits. `same_lines`: each on the same line.
bool MeanTheSame(const ruxcomp::reader::SyntaxTree& one, const ruxcomp::reader::SyntaxTree& other,
                 bool same_lines);

}  // namespace rux::format

#endif  // FORMAT_SAME_MEANING_H_
