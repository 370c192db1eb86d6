// The words that a path into a compiled file may go on with.
#ifndef TOOL_COMPLETION_PATH_WORDS_H_
#define TOOL_COMPLETION_PATH_WORDS_H_

#include <string>
#include <vector>

#include "tool/completion/candidate.h"

namespace rux::tool {

// The kinds of sections that the meta file holds.
std::vector<Candidate> KindWords(const std::string& file);

// The path as typed so far, with its last step replaced by each that may be there: names, IDs after
// a '#', ordinals after a '@'. What cannot be typed is left out, or is there as its ordinal.
//
// The first is for `rux get` (meta_find.h), the second for `rux where` (debug_find.h). Both throw a
// Failure when the file cannot be read or has nothing where the path leads.
std::vector<Candidate> MetaPathWords(const std::string& file, const std::string& typed);
std::vector<Candidate> DebugMetaPathWords(const std::string& file, const std::string& typed);

}  // namespace rux::tool

#endif  // TOOL_COMPLETION_PATH_WORDS_H_
