#include "format/alignment.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "format/columns.h"
#include "format/item_text.h"
#include "reader/byte_order_mark.h"
#include "reader/recorded_line.h"
#include "reader/script.h"
#include "reader/syntax_tree.h"

namespace rux::format {
namespace {

using ruxcomp::reader::LineKind;
using ruxcomp::reader::SyntaxLine;
using ruxcomp::reader::SyntaxTree;
using ruxcomp::reader::Token;
using ruxcomp::reader::TokenKind;

// One run at a time.
class Aligner {
 public:
  Aligner(const SyntaxTree& tree, const std::vector<bool>& untouched)
      : tree_(tree), untouched_(untouched) {
    lines_.reserve(tree.lines().size());
  }

  std::vector<std::string> Align() {
    const SyntaxLine* const end = tree_.lines().end();
    for (const SyntaxLine* line = tree_.lines().begin(); line != end;) {
      const SyntaxLine* const first = line++;
      while (line != end && !BeginsRun(*line)) ++line;
      AlignRun(first, line);
    }
    return std::move(lines_);
  }

 private:
  // What a comment begins with.
  struct Comment {
    std::string_view text;         // empty: there is none
    std::size_t column = 0;        // as it is
    bool is_fixed = false;         // of a line that stays as it is
    bool follows_another = false;  // a comment line below a comment in the same column
  };

  struct Row {
    std::string text;     // without comment and line end
    std::size_t end = 0;  // the column after it
    Comment comment;
  };

  static bool BeginsRun(const SyntaxLine& line) {
    return line.kind == LineKind::kEmpty || line.kind == LineKind::kHeader;
  }

  bool IsUntouched(const SyntaxLine& line) const {
    return untouched_[static_cast<std::size_t>(&line - tree_.lines().begin())];
  }

  std::string_view LineEndOf(const SyntaxLine& line) const {
    const Token& last = tree_.TokensOf(line).end()[-1];
    return last.kind == TokenKind::kLineEnd ? tree_.TextOf(last) : std::string_view();
  }

  // Without a byte order mark.
  std::string_view AllOf(const SyntaxLine& line) const {
    const ruxcomp::reader::Range range = tree_.RangeOf(line);
    const std::string_view text = std::string_view(tree_.text()).substr(range.begin, range.size());
    return range.begin == 0 ? ruxcomp::reader::WithoutMark(text) : text;
  }

  void AlignRun(const SyntaxLine* first, const SyntaxLine* last) {
    const std::size_t equals = ColumnOfEquals(first, last);
    rows_.clear();
    moved_.clear();
    for (const SyntaxLine* line = first; line != last; ++line) AddRow(*line, equals);
    FindCommentColumns();
    for (const SyntaxLine* line = first; line != last; ++line) {
      Row& row = rows_[static_cast<std::size_t>(line - first)];
      if (!IsUntouched(*line)) Complete(row, *line);
      lines_.push_back(std::move(row.text));
    }
  }

  std::size_t ColumnOfEquals(const SyntaxLine* first, const SyntaxLine* last) const {
    std::size_t column = 0;
    for (const SyntaxLine* line = first; line != last; ++line) {
      if (line->kind != LineKind::kItem || IsUntouched(*line) || !HasEquals(*line)) continue;
      column = std::max(column, ColumnAfter(tree_.ItemOf(*line)->key) + 1);
    }
    return column;
  }

  bool HasEquals(const SyntaxLine& line) const {
    const auto tokens = tree_.TokensOf(line);
    return std::any_of(tokens.begin(), tokens.end(),
                       [](const Token& token) { return token.kind == TokenKind::kEquals; });
  }

  void AddRow(const SyntaxLine& line, std::size_t equals) {
    Row row;
    row.comment = CommentOf(line);
    if (IsUntouched(line)) {
      row.text = AllOf(line);
      row.comment.is_fixed = true;
    } else {
      // A comment fits without another allocation.
      row.text.reserve(tree_.RangeOf(line).size() + equals);
      if (line.kind == LineKind::kHeader) AppendHeader(row.text, tree_, line);
      if (line.kind == LineKind::kItem) AppendItem(row.text, tree_, line, equals);
      row.end = ColumnAfter(std::string_view(row.text).substr(row.text.rfind('\n') + 1));
    }
    rows_.push_back(std::move(row));
  }

  Comment CommentOf(const SyntaxLine& line) const {
    const auto tokens = tree_.TokensOf(line);
    std::size_t begin = tokens.begin()->begin;
    for (const Token& token : tokens) {
      if (token.kind == TokenKind::kByteOrderMark || token.kind == TokenKind::kContinuation) {
        begin = tree_.RangeOf(token).end;
      }
      if (token.kind != TokenKind::kComment) continue;
      const std::string_view before(tree_.text().data() + begin, token.begin - begin);
      Comment comment{tree_.TextOf(token), ColumnAfter(before)};
      comment.follows_another = line.kind == LineKind::kComment && comment.column > 0 &&
                                !rows_.empty() && HasColumn(rows_.back().comment, comment.column);
      comment.is_fixed = comment.follows_another && rows_.back().comment.is_fixed;
      return comment;
    }
    return {};
  }

  // Whether a comment line in that column belongs to a comment above it.
  bool HasColumn(const Comment& above, std::size_t column) const {
    if (above.text.empty() || above.column != column) return false;
    return above.follows_another || above.is_fixed || !rows_.back().text.empty();
  }

  // Comments that began in one column stay in one.
  void FindCommentColumns() {
    for (const Row& row : rows_) {
      if (row.comment.text.empty() || row.comment.is_fixed || row.text.empty()) continue;
      std::size_t& column =
          moved_.try_emplace(row.comment.column, row.comment.column).first->second;
      column = std::max(column, row.end + 1);
    }
  }

  void Complete(Row& row, const SyntaxLine& line) {
    const Comment& comment = row.comment;
    if (!comment.text.empty()) {
      if (!row.text.empty() || comment.follows_another) {
        row.text.append(ColumnOf(comment) - row.end, ' ');
      }
      row.text += comment.text;
    }
    const std::string_view end = LineEndOf(line);
    // A last line of nothing but blanks would not be there any more.
    row.text += line.kind == LineKind::kEmpty && end.empty() ? AllOf(line) : end;
  }

  std::size_t ColumnOf(const Comment& comment) const {
    const auto moved = comment.is_fixed ? moved_.end() : moved_.find(comment.column);
    return moved == moved_.end() ? comment.column : moved->second;
  }

  const SyntaxTree& tree_;
  const std::vector<bool>& untouched_;
  std::vector<std::string> lines_;
  std::vector<Row> rows_;                     // of the run
  std::map<std::size_t, std::size_t> moved_;  // comments, by the columns in which they began
};

}  // namespace

std::vector<std::string> AlignedLines(const SyntaxTree& tree, const std::vector<bool>& untouched) {
  return Aligner(tree, untouched).Align();
}

}  // namespace rux::format
