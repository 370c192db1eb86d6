// What comments call the files of a source.
#ifndef IMPORTS_SOURCE_NAMES_H_
#define IMPORTS_SOURCE_NAMES_H_

#include <string>
#include <vector>

namespace rux::imports {

// The names of the files without their folders; of those that have the same name, each with as many
// folders as set it apart: "m1/s.csv".
std::vector<std::string> ShortestNames(const std::vector<std::string>& paths);

}  // namespace rux::imports

#endif  // IMPORTS_SOURCE_NAMES_H_
