// INCLUDE lines that follow files to other places.
#ifndef ASSISTANCE_MOVED_FILES_H_
#define ASSISTANCE_MOVED_FILES_H_

#include <functional>
#include <string>
#include <vector>

#include "assistance/edit.h"
#include "index/index.h"

namespace rux::assistance {

// Where the file at a path is going to be: the same path when it stays.
using NewPath = std::function<std::string(const std::string& path)>;

// What makes the files that are read include the same files as before. Edits of a file that moves
// itself are of the text where it is now. A line that cannot name the new path stays.
std::vector<Edit> EditsForMoves(const index::Index& index, const NewPath& new_path);

}  // namespace rux::assistance

#endif  // ASSISTANCE_MOVED_FILES_H_
