#include "format/same_meaning.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "format/numbers.h"
#include "reader/script.h"
#include "reader/syntax_tree.h"
#include "reader/value.h"

namespace rux::format {
namespace {

using ruxcomp::reader::CookedValue;
using ruxcomp::reader::Item;
using ruxcomp::reader::Section;
using ruxcomp::reader::SyntaxLine;
using ruxcomp::reader::SyntaxTree;
using ruxcomp::reader::Token;
using ruxcomp::reader::TokenKind;

bool HaveSameValue(const Section& section, std::size_t index, const Item& other) {
  const Item& one = section.items[index];
  const bool is_whole = one.blanks_at_commas == 0 && other.blanks_at_commas == 0;
  if (is_whole && one.value == other.value) return true;
  const std::string value = CookedValue(one);
  const std::string other_value = CookedValue(other);
  return value == other_value ||
         (AreSameButForDigits(value, other_value) && HasFreeSpelling(section, index));
}

bool AreSame(const Section& one, const Section& other, bool same_lines) {
  if (one.name != other.name || one.item_count != other.item_count) return false;
  if (same_lines && one.line != other.line) return false;
  for (std::size_t i = 0; i < one.item_count; ++i) {
    const Item& item = one.items[i];
    const Item& other_item = other.items[i];
    if (item.key != other_item.key || (same_lines && item.line != other_item.line)) return false;
    if (!HaveSameValue(one, i, other_item)) return false;
  }
  return true;
}

std::vector<std::string_view> CommentsOf(const SyntaxTree& tree) {
  std::vector<std::string_view> comments;
  for (const Token& token : tree.tokens()) {
    if (token.kind == TokenKind::kComment) comments.push_back(tree.TextOf(token));
  }
  return comments;
}

bool HaveSameLines(const SyntaxTree& one, const SyntaxTree& other) {
  return std::equal(one.lines().begin(), one.lines().end(), other.lines().begin(),
                    other.lines().end(), [](const SyntaxLine& a, const SyntaxLine& b) {
                      return a.number == b.number && a.kind == b.kind;
                    });
}

}  // namespace

bool MeanTheSame(const SyntaxTree& one, const SyntaxTree& other, bool same_lines) {
  const std::vector<Section>& sections = one.script().sections();
  const std::vector<Section>& others = other.script().sections();
  return std::equal(
             sections.begin(), sections.end(), others.begin(), others.end(),
             [&](const Section& a, const Section& b) { return AreSame(a, b, same_lines); }) &&
         CommentsOf(one) == CommentsOf(other) && (!same_lines || HaveSameLines(one, other));
}

}  // namespace rux::format
