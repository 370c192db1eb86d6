#include "format/blank_lines.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "reader/recorded_line.h"
#include "reader/syntax_tree.h"
#include "reader/value.h"

namespace rux::format {
namespace {

using ruxcomp::reader::LineKind;
using ruxcomp::reader::SyntaxTree;

std::string_view LineEndOf(std::string_view line) {
  const std::size_t begin =
      line.size() > 1 && line[line.size() - 2] == '\r' ? line.size() - 2 : line.size() - 1;
  return line.substr(begin);
}

class Spacer {
 public:
  Spacer(const SyntaxTree& tree, const std::vector<std::string>& lines,
         const std::vector<bool>& untouched)
      : tree_(tree), lines_(lines), untouched_(untouched) {}

  std::string Text() {
    FindSections();
    for (std::size_t i = 0; i < lines_.size(); ++i) Add(i);
    return std::move(text_);
  }

 private:
  LineKind KindOf(std::size_t i) const { return tree_.lines().begin()[i].kind; }

  // A comment line that does not continue a comment after an item.
  bool IsOwnComment(std::size_t i) const {
    return KindOf(i) == LineKind::kComment && !ruxcomp::reader::IsBlank(lines_[i].front());
  }

  void FindSections() {
    begins_section_.assign(lines_.size(), false);
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      if (KindOf(i) != LineKind::kHeader) continue;
      std::size_t first = i;
      while (first > 0 && IsOwnComment(first - 1)) --first;
      begins_section_[first] = true;
    }
  }

  void Add(std::size_t i) {
    if (KindOf(i) == LineKind::kEmpty && !untouched_[i]) {
      pending_ = pending_.empty() ? std::string_view(lines_[i]) : pending_;
      return;
    }
    const bool may_begin = i > 0 && begins_section_[i] && !untouched_[i];
    if (may_begin && pending_.empty() && KindOf(i - 1) != LineKind::kEmpty) {
      pending_ = LineEndOf(lines_[i - 1]);
    }
    if (!text_.empty()) text_ += pending_;
    pending_ = {};
    text_ += lines_[i];
  }

  const SyntaxTree& tree_;
  const std::vector<std::string>& lines_;
  const std::vector<bool>& untouched_;
  std::vector<bool> begins_section_;
  std::string text_;
  std::string_view pending_;  // an empty line before what comes next
};

}  // namespace

std::string WithBlankLines(const SyntaxTree& tree, const std::vector<std::string>& lines,
                           const std::vector<bool>& untouched) {
  return Spacer(tree, lines, untouched).Text();
}

}  // namespace rux::format
