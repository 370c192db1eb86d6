// The items of a device tree: its properties.
#ifndef IMPORTS_FORMATS_TREE_ITEMS_H_
#define IMPORTS_FORMATS_TREE_ITEMS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "imports/board.h"
#include "imports/formats/flat_tree.h"
#include "losses/ledger.h"

namespace rux::imports {

// Millidegrees, of which there may be less than none.
inline constexpr std::string_view kTemperature = "temperature";
// The first cell, of which there is one.
std::int32_t SignedCell(const TreeProperty& property);

// Notes all of them when it is made; those of nodes that are switched off are dropped. Nodes are
// known by their places in the tree.
class TreeItems {
 public:
  // The tree must outlive the items.
  TreeItems(const FlatTree& tree, losses::Ledger& ledger);

  const TreeNode& Node(std::size_t node) const { return tree_.nodes()[node]; }
  const std::vector<std::size_t>& ChildrenOf(std::size_t node) const { return children_[node]; }
  // Whether its status, or that of a node that it is in, says so.
  bool IsOff(std::size_t node) const { return is_off_[node]; }

  const std::vector<losses::ItemId>& ItemsOf(std::size_t node) const { return items_[node]; }
  losses::ItemId ItemFor(std::size_t node, const TreeProperty* property) const;
  // Empty when the node does not have the property.
  Text Value(std::size_t node, std::string_view name) const;

  // All of the node are dropped until the scripts have something of them.
  void Drop(std::size_t node, losses::Reason reason);

 private:
  void NoteNode(std::size_t place);

  const FlatTree& tree_;
  losses::Ledger& ledger_;
  std::vector<std::vector<std::size_t>> children_;  // by node
  std::vector<bool> is_off_;                        // by node
  std::vector<std::vector<losses::ItemId>> items_;  // by node and property
};

}  // namespace rux::imports

#endif  // IMPORTS_FORMATS_TREE_ITEMS_H_
