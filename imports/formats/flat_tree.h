// A device tree: what its nodes and properties are, not what they mean.
#ifndef IMPORTS_FORMATS_FLAT_TREE_H_
#define IMPORTS_FORMATS_FLAT_TREE_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rux::imports {

struct TreeProperty {
  std::string_view name;
  std::string_view bytes;

  // Its cells of 32 bits; without what is left at the end.
  std::vector<std::uint32_t> Cells() const;
  // Its texts, of which each ends with a zero byte; empty when it has other bytes.
  std::vector<std::string_view> Texts() const;
  // As people read it: "national,lm75", "85000 2000", of reg "0x48"; bytes, if it is neither texts
  // nor cells. Of many numbers, the first.
  std::string Text() const;
};

struct TreeNode {
  std::string_view name;  // "tmp75@48"; of the root, empty
  std::string path;       // "/i2c@1e78a000/tmp75@48"; of the root, "/"
  std::size_t parent;     // its place; of the root, its own
  std::vector<TreeProperty> properties;

  const TreeProperty* Find(std::string_view property) const;
};

// Nodes come after the one that they are in.
class FlatTree {
 public:
  // The bytes of a dtb file, which must outlive the tree. Throws a Failure that names the path when
  // they are damaged, names have more than 100 bytes, or nodes are nested deeper than 32. Cost: the
  // bytes.
  FlatTree(const std::string& path, std::string_view bytes);

  const std::vector<TreeNode>& nodes() const { return nodes_; }
  // The place of the node that a phandle or an absolute path is of.
  std::optional<std::size_t> FindHandle(std::uint32_t handle) const;
  std::optional<std::size_t> FindPath(std::string_view path) const;

 private:
  void AddNode(const std::string& path, const void* tree, int offset, std::size_t parent);

  std::vector<TreeNode> nodes_;
  std::map<std::uint32_t, std::size_t> handles_;
  std::map<std::string, std::size_t, std::less<>> paths_;
};

}  // namespace rux::imports

#endif  // IMPORTS_FORMATS_FLAT_TREE_H_
