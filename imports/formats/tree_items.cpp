#include "imports/formats/tree_items.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "imports/board.h"
#include "imports/formats/flat_tree.h"
#include "losses/ledger.h"

namespace rux::imports {
namespace {

bool IsSwitchedOff(const TreeNode& node) {
  const TreeProperty* const status = node.Find("status");
  if (status == nullptr) return false;
  const std::string text = status->Text();
  return text != "okay" && text != "ok";
}

}  // namespace

std::int32_t SignedCell(const TreeProperty& property) {
  return static_cast<std::int32_t>(property.Cells().front());
}

TreeItems::TreeItems(const FlatTree& tree, losses::Ledger& ledger) : tree_(tree), ledger_(ledger) {
  for (std::size_t i = 0; i < tree.nodes().size(); ++i) NoteNode(i);
}

void TreeItems::NoteNode(std::size_t place) {
  const TreeNode& node = Node(place);
  children_.emplace_back();
  if (place > 0) children_[node.parent].push_back(place);
  is_off_.push_back(place > 0 && (is_off_[node.parent] || IsSwitchedOff(node)));
  items_.emplace_back();
  for (const TreeProperty& property : node.properties) {
    const bool is_signed = property.name == kTemperature && property.Cells().size() == 1;
    items_.back().push_back(
        ledger_.Note({0, node.path + ':' + std::string(property.name),
                      is_signed ? std::to_string(SignedCell(property)) : property.Text()}));
  }
  if (is_off_.back()) Drop(place, losses::Reason::kDisabled);
}

void TreeItems::Drop(std::size_t node, losses::Reason reason) {
  for (const losses::ItemId item : items_[node]) ledger_.Dropped(item, reason);
}

losses::ItemId TreeItems::ItemFor(std::size_t node, const TreeProperty* property) const {
  return items_[node][static_cast<std::size_t>(property - Node(node).properties.data())];
}

Text TreeItems::Value(std::size_t node, std::string_view name) const {
  const TreeProperty* const property = Node(node).Find(name);
  if (property == nullptr) return {};
  return {property->Text(), ItemFor(node, property)};
}

}  // namespace rux::imports
