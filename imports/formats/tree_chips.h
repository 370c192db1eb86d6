// Monitoring chips in device trees.
#ifndef IMPORTS_FORMATS_TREE_CHIPS_H_
#define IMPORTS_FORMATS_TREE_CHIPS_H_

#include <optional>
#include <string>
#include <vector>

#include "imports/formats/flat_tree.h"

namespace rux::imports {

// What the chip of the node measures, by the names of the kernel's hwmon interface; empty where
// that depends on more than the chip. None: it is not a known chip.
std::optional<std::vector<std::string>> FeaturesOf(const TreeNode& node);

}  // namespace rux::imports

#endif  // IMPORTS_FORMATS_TREE_CHIPS_H_
