// What must hold for the syntax tree of any text.
#ifndef TESTS_SUPPORT_TREE_FAULT_H_
#define TESTS_SUPPORT_TREE_FAULT_H_

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "reader/script.h"
#include "reader/syntax_tree.h"
#include "reader/value.h"

namespace tree {

using ruxcomp::reader::LineKind;
using ruxcomp::reader::SyntaxLine;
using ruxcomp::reader::SyntaxTree;
using ruxcomp::reader::Token;
using ruxcomp::reader::TokenKind;

inline bool IsOf(std::string_view text, std::string_view characters) {
  return text.find_first_not_of(characters) == std::string_view::npos;
}

inline bool HasItsBytes(TokenKind kind, std::string_view text) {
  switch (kind) {
    case TokenKind::kByteOrderMark:
      return text == "\xEF\xBB\xBF";
    case TokenKind::kBlanks:
      return IsOf(text, " \t");
    case TokenKind::kOpenBracket:
      return text == "[";
    case TokenKind::kCloseBracket:
      return text == "]";
    case TokenKind::kEquals:
      return text == "=";
    case TokenKind::kComma:
      return text == ",";
    case TokenKind::kQuote:
      return text == "\"";
    case TokenKind::kNul:
      return text == std::string_view("\0", 1);
    case TokenKind::kContinuation:
      return text == "\\\n" || text == "\\\r\n";
    case TokenKind::kLineEnd:
      return text == "\n" || text == "\r\n";
    default:
      return text.find('\n') == std::string_view::npos && text.find('\0') == std::string_view::npos;
  }
}

// The bytes of all tokens of a kind.
inline std::string BytesOf(const SyntaxTree& tree, const SyntaxLine& line, TokenKind kind) {
  std::string bytes;
  for (const Token& token : tree.TokensOf(line)) {
    if (token.kind == kind) bytes += tree.TextOf(token);
  }
  return bytes;
}

inline std::string WithoutBlanks(std::string text) {
  text.erase(std::remove_if(text.begin(), text.end(), ruxcomp::reader::IsBlank), text.end());
  return text;
}

inline std::string TokenFault(const SyntaxTree& tree) {
  std::string joined;
  for (const Token& token : tree.tokens()) {
    const std::string_view text = tree.TextOf(token);
    if (token.begin != joined.size() || text.empty()) return "a token is not where one ended";
    if (!HasItsBytes(token.kind, text)) return "a token has other bytes than its kind";
    if (tree.TokenAt(token.begin) != &token ||
        tree.TokenAt(token.begin + text.size() - 1) != &token)
      return "a token is not found by its bytes";
    joined += text;
  }
  return joined == tree.text() ? "" : "the tokens are not the text";
}

inline std::string ItemFault(const SyntaxTree& tree, const SyntaxLine& line) {
  const ruxcomp::reader::Item* const item = tree.ItemOf(line);
  if ((item != nullptr) != (line.kind == LineKind::kItem)) return "an item line has no item";
  if (item == nullptr) return "";
  if (item->line != line.number) return "an item is on another line";
  const auto place = tree.PlaceOf(line);
  const auto known = tree.script().PlaceOf(*item);
  if (!place || place->section != known.section || place->item != known.item)
    return "an item has another place";
  if (&tree.LineOf(*place) != &line) return "an item does not lead back to its line";
  if (BytesOf(tree, line, TokenKind::kKey) != item->key) return "a key has other bytes";
  std::string parts;
  for (const std::string_view part : ruxcomp::reader::Parts(*item)) parts += part;
  // A part may have blanks that are not delivered.
  return WithoutBlanks(BytesOf(tree, line, TokenKind::kPart)) == WithoutBlanks(parts)
             ? ""
             : "parts have other bytes";
}

// Empty: none.
inline std::string FaultOf(const SyntaxTree& tree) {
  std::string fault = TokenFault(tree);
  std::size_t headers = 0;
  std::size_t items = 0;
  std::size_t end = 0;
  for (const SyntaxLine& line : tree.lines()) {
    const ruxcomp::reader::Range range = tree.RangeOf(line);
    if (range.begin != end || range.size() == 0) return "a line is not where one ended";
    end = range.end;
    if (tree.LineAt(range.begin) != &line || tree.LineAt(range.end - 1) != &line)
      return "a line is not found by its bytes";
    if (tree.script().LineAt(range.begin) != line.number) return "a line has another number";
    if (line.kind == LineKind::kHeader) ++headers;
    const auto* section = tree.SectionOf(line);
    if ((section == nullptr) != (headers == 0)) return "a line is in another section";
    if (line.kind == LineKind::kHeader &&
        (section->line != line.number ||
         BytesOf(tree, line, TokenKind::kSectionName) != section->name))
      return "a header has other bytes";
    if (line.kind == LineKind::kItem) ++items;
    if (fault.empty()) fault = ItemFault(tree, line);
  }
  std::size_t all = 0;
  for (const auto& section : tree.script().sections()) all += section.item_count;
  if (headers != tree.script().sections().size()) return "a section has no line";
  if (items != all) return "an item has no line";
  return fault;
}

}  // namespace tree

#endif  // TESTS_SUPPORT_TREE_FAULT_H_
