#include "imports/formats/flat_tree.h"

#include <fmt/format.h>
#include <libfdt.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/failure.h"

namespace rux::imports {
namespace {

constexpr std::size_t kDeepestNode = 32;
constexpr std::size_t kLongestName = 100;
constexpr std::size_t kMostShown = 64;  // bytes of a property that people see
constexpr std::size_t kCell = sizeof(std::uint32_t);
constexpr std::size_t kHeader = 10 * kCell;

bool IsPrintable(char c) { return c >= ' ' && c <= '~'; }

[[noreturn]] void RefuseTree(const std::string& path, std::string_view what) {
  throw support::Failure(support::ExitStatus::kTrouble, "{}: {}", path, what);
}

// Names of properties are in a block of their own, to which many properties can refer: libfdt reads
// all of a name for each of them.
void ExpectShortNames(const std::string& path, std::string_view bytes) {
  if (bytes.size() < kHeader || fdt_check_header(bytes.data()) != 0) return;
  const std::size_t begin = fdt_off_dt_strings(bytes.data());
  if (begin > bytes.size()) return;
  std::size_t length = 0;
  for (const char c : bytes.substr(begin, fdt_size_dt_strings(bytes.data()))) {
    length = c == '\0' ? 0 : length + 1;
    if (length > kLongestName) RefuseTree(path, "a property has a name of more than 100 bytes");
  }
}

}  // namespace

std::vector<std::uint32_t> TreeProperty::Cells() const {
  std::vector<std::uint32_t> cells;
  for (std::size_t at = 0; at + kCell <= bytes.size(); at += kCell) {
    // Of any alignment, and with the highest byte first.
    std::uint32_t cell = 0;
    for (const char c : bytes.substr(at, kCell)) cell = cell << 8U | static_cast<unsigned char>(c);
    cells.push_back(cell);
  }
  return cells;
}

std::vector<std::string_view> TreeProperty::Texts() const {
  std::vector<std::string_view> texts;
  if (bytes.empty() || bytes.back() != '\0') return {};
  for (std::size_t begin = 0; begin < bytes.size();) {
    const std::size_t end = bytes.find('\0', begin);
    const std::string_view text = bytes.substr(begin, end - begin);
    if (text.empty() || !std::all_of(text.begin(), text.end(), IsPrintable)) return {};
    texts.push_back(text);
    begin = end + 1;
  }
  return texts;
}

std::string TreeProperty::Text() const {
  const TreeProperty shown{name, bytes.substr(0, kMostShown)};
  const char* const rest = shown.bytes.size() < bytes.size() ? " ..." : "";
  const std::vector<std::string_view> texts = Texts();
  if (!texts.empty()) return fmt::format("{}", fmt::join(texts, " "));
  const std::vector<std::uint32_t> cells = shown.Cells();
  if (name == "reg") return fmt::format("{:#x}{}", fmt::join(cells, " "), rest);
  if (bytes.size() % kCell == 0) return fmt::format("{}{}", fmt::join(cells, " "), rest);
  std::vector<unsigned char> numbers(shown.bytes.begin(), shown.bytes.end());
  return fmt::format("{:02x}{}", fmt::join(numbers, " "), rest);
}

const TreeProperty* TreeNode::Find(std::string_view property) const {
  for (const TreeProperty& candidate : properties) {
    if (candidate.name == property) return &candidate;
  }
  return nullptr;
}

FlatTree::FlatTree(const std::string& path, std::string_view bytes) {
  ExpectShortNames(path, bytes);
  const void* const tree = bytes.data();
  const int error = fdt_check_full(tree, bytes.size());
  if (error != 0) RefuseTree(path, fmt::format("not a sound device tree: {}", fdt_strerror(error)));
  std::vector<std::size_t> above;  // the node that is open at each depth
  int depth = 0;
  for (int offset = 0; offset >= 0 && depth >= 0; offset = fdt_next_node(tree, offset, &depth)) {
    above.resize(std::min(above.size(), static_cast<std::size_t>(depth)));
    if (above.size() == kDeepestNode) RefuseTree(path, "nodes are nested deeper than 32");
    AddNode(path, tree, offset, above.empty() ? 0 : above.back());
    above.push_back(nodes_.size() - 1);
  }
}

void FlatTree::AddNode(const std::string& path, const void* tree, int offset, std::size_t parent) {
  int length = 0;
  const char* const name = fdt_get_name(tree, offset, &length);
  if (length < 0 || static_cast<std::size_t>(length) > kLongestName)
    RefuseTree(path, "a node has a name of more than 100 bytes");
  TreeNode node{{name, static_cast<std::size_t>(length)}, "", parent, {}};
  if (!nodes_.empty() && nodes_[parent].path != "/") node.path = nodes_[parent].path;
  node.path += '/';
  node.path += node.name;
  for (int at = fdt_first_property_offset(tree, offset); at >= 0;
       at = fdt_next_property_offset(tree, at)) {
    const char* property = nullptr;
    const void* const value = fdt_getprop_by_offset(tree, at, &property, &length);
    if (value == nullptr || length < 0) RefuseTree(path, "a property is damaged");
    node.properties.push_back(
        {property, {static_cast<const char*>(value), static_cast<std::size_t>(length)}});
  }
  for (const char* const key : {"phandle", "linux,phandle"}) {
    const TreeProperty* const handle = node.Find(key);
    if (handle == nullptr || handle->bytes.size() != kCell) continue;
    handles_.emplace(handle->Cells().front(), nodes_.size());
  }
  paths_.emplace(node.path, nodes_.size());
  nodes_.push_back(std::move(node));
}

std::optional<std::size_t> FlatTree::FindHandle(std::uint32_t handle) const {
  const auto found = handles_.find(handle);
  return found == handles_.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::size_t> FlatTree::FindPath(std::string_view path) const {
  const auto found = paths_.find(path);
  return found == paths_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace rux::imports
