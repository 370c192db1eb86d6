#include "format/item_text.h"

#include <cstddef>
#include <string>
#include <string_view>

#include "format/columns.h"
#include "format/numbers.h"
#include "reader/script.h"
#include "reader/syntax_tree.h"

namespace rux::format {
namespace {

using ruxcomp::reader::Item;
using ruxcomp::reader::Section;
using ruxcomp::reader::SyntaxLine;
using ruxcomp::reader::SyntaxTree;
using ruxcomp::reader::Token;
using ruxcomp::reader::TokenKind;

// Writes the tokens of a value one after the other.
class ValueText {
 public:
  // `column`: of the first part. `section`, `index`: where the item is.
  ValueText(std::string& text, std::size_t column, const Section& section, std::size_t index)
      : text_(text), column_(column), section_(section), index_(index) {}

  void Add(TokenKind kind, std::string_view bytes) {
    switch (kind) {
      case TokenKind::kPart:
        return AddPart(bytes);
      case TokenKind::kQuote:
        if (!is_quoted_) AddBlank();
        is_quoted_ = !is_quoted_;
        text_ += bytes;
        return;
      case TokenKind::kComma:
        // After another comma, or on a line of its own, it begins a part.
        if (!follows_comma_) AddBlank();
        text_ += bytes;
        follows_comma_ = needs_blank_ = true;
        return;
      case TokenKind::kContinuation:
        text_ += ' ';
        text_ += bytes;
        text_.append(column_, ' ');
        needs_blank_ = false;
        return;
      default:
        return;  // blanks
    }
  }

 private:
  void AddPart(std::string_view part) {
    if (!is_quoted_) AddBlank();
    if (!is_quoted_ && HasSmallDigits(part) && HasFreeSpelling(section_, index_)) {
      AppendCapitals(text_, part);
    } else {
      text_ += part;
    }
  }

  void AddBlank() {
    if (needs_blank_) text_ += ' ';
    needs_blank_ = follows_comma_ = false;
  }

  std::string& text_;
  const std::size_t column_;
  const Section& section_;
  const std::size_t index_;
  bool needs_blank_ = true;  // before what comes next
  bool follows_comma_ = false;
  bool is_quoted_ = false;
};

}  // namespace

void AppendHeader(std::string& text, const SyntaxTree& tree, const SyntaxLine& line) {
  text += '[';
  text += tree.SectionOf(line)->name;
  text += ']';
}

void AppendItem(std::string& text, const SyntaxTree& tree, const SyntaxLine& line,
                std::size_t equals) {
  const Item& item = *tree.ItemOf(line);
  text += item.key;
  const Token* token = tree.TokensOf(line).begin();
  const Token* const end = tree.TokensOf(line).end();
  while (token != end && token->kind != TokenKind::kEquals) ++token;
  if (token == end) return;
  text.append(equals - ColumnAfter(item.key), ' ');
  text += '=';
  ValueText value(text, equals + 2, *tree.SectionOf(line), line.item);
  for (; token != end && token->kind != TokenKind::kComment; ++token) {
    value.Add(token->kind, tree.TextOf(*token));
  }
}

}  // namespace rux::format
