#include "imports/formats/tree_chips.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "imports/formats/flat_tree.h"

namespace rux::imports {
namespace {

struct ChipRow {
  std::string_view name;
  std::string_view features;
};
constexpr ChipRow kChips[] = {
#define CHIP(name, features) {name, features},
#include "imports/formats/chips.def"
};

std::vector<std::string> Words(std::string_view text) {
  std::vector<std::string> words;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    words.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return words;
}

}  // namespace

std::optional<std::vector<std::string>> FeaturesOf(const TreeNode& node) {
  const TreeProperty* const compatible = node.Find("compatible");
  if (compatible == nullptr) return std::nullopt;
  for (const std::string_view text : compatible->Texts()) {
    const std::string_view name = text.substr(text.find(',') + 1);
    for (const ChipRow& row : kChips) {
      if (row.name == name) return Words(row.features);
    }
  }
  return std::nullopt;
}

}  // namespace rux::imports
