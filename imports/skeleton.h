// The board of a machine that is yet to be described.
#ifndef IMPORTS_SKELETON_H_
#define IMPORTS_SKELETON_H_

#include <string>
#include <vector>

#include "imports/board.h"

namespace rux::imports {

struct SkeletonOptions {
  std::string model;
  std::vector<std::string> groups;   // "BOARD/CPU0", from the outermost; none: one, BOARD
  std::vector<std::string> devices;  // names
  std::vector<std::string> sensors;  // "BOARD/CPU0/CPU0_TEMP=temperature"; the first group's
                                     // without a group
};

// Throws a Failure of wrong usage for a sensor that is anything else.
Board SkeletonOf(const SkeletonOptions& options);

}  // namespace rux::imports

#endif  // IMPORTS_SKELETON_H_
