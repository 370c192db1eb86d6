// A script file as a tree in which every byte has its place: the file, its sections, their lines,
// the tokens of these.
//
//   [SENSOR]  # front          kOpenBracket kSectionName kCloseBracket kBlanks kComment kLineEnd
//   SENSORS = 1, "b", \        kKey kBlanks kEquals kBlanks kPart kComma kBlanks kQuote kPart
//   kQuote
//             3                kComma kBlanks kContinuation kBlanks kPart kLineEnd
//
// The tokens follow each other without a gap: one ends where the next one begins. A text with
// errors has a tree like any other.
#ifndef READER_SYNTAX_TREE_H_
#define READER_SYNTAX_TREE_H_

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reader/recorded_line.h"
#include "reader/script.h"

namespace ruxcomp::reader {

enum class TokenKind : std::uint8_t {
  kByteOrderMark,
  kBlanks,
  kComment,  // from its sign to its last byte that is not blank
  kOpenBracket,
  kSectionName,  // without the blanks in it, which are tokens
  kCloseBracket,
  kKey,
  kEquals,
  kPart,  // of a value, as it is delivered; without quotes
  kComma,
  kQuote,
  kDropped,       // what the reader does not deliver, for another reason than those of other tokens
  kNul,           // a zero byte
  kContinuation,  // a backslash and the line end after it
  kLineEnd,
};

// A part, a key, a comment or a run of blanks that continuations or zero bytes interrupt has a
// token for each piece.
struct Token {
  std::uint32_t begin;
  TokenKind kind;
};

// With the lines that backslashes join to it.
struct SyntaxLine {
  static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

  std::uint32_t first_token;
  std::uint32_t number;   // from 1; of the first one
  std::uint32_t section;  // the place of the section in Script::sections(); kNone: before the first
  std::uint32_t item;     // its place in the section; kNone: not an item
  LineKind kind;
};

// A range of tokens or lines.
template <class Element>
struct Stretch {
  const Element* first;
  const Element* last;

  const Element* begin() const { return first; }
  const Element* end() const { return last; }
  std::size_t size() const { return static_cast<std::size_t>(last - first); }
  bool empty() const { return first == last; }
};

class SyntaxTree {
 public:
  // Scans the text as a Script does, once.
  SyntaxTree(std::string text, const ProblemSink& report);
  SyntaxTree(const SyntaxTree&) = delete;
  SyntaxTree& operator=(const SyntaxTree&) = delete;

  const Script& script() const { return script_; }
  const std::string& text() const { return script_.text(); }

  Stretch<SyntaxLine> lines() const { return {lines_.data(), lines_.data() + lines_.size()}; }
  // Those before the first header, which are in no section.
  Stretch<SyntaxLine> LinesBeforeSections() const;
  // Of one of Script::sections(), from its header on.
  Stretch<SyntaxLine> LinesOf(std::size_t section) const;

  Stretch<Token> tokens() const { return {tokens_.data(), tokens_.data() + tokens_.size() - 1}; }
  Stretch<Token> TokensOf(const SyntaxLine& line) const;
  Range RangeOf(const Token& token) const { return {token.begin, (&token)[1].begin}; }
  std::string_view TextOf(const Token& token) const;
  // All of the line, with its end.
  Range RangeOf(const SyntaxLine& line) const;

  // What has the byte at `offset` or, after the last byte, the last one; null for an empty text.
  const SyntaxLine* LineAt(std::size_t offset) const;
  const Token* TokenAt(std::size_t offset) const;

  // The section that the line is in; null: none.
  const Section* SectionOf(const SyntaxLine& line) const;
  // Null and none when the line is not an item.
  const Item* ItemOf(const SyntaxLine& line) const;
  std::optional<ItemPlace> PlaceOf(const SyntaxLine& line) const;
  // The line of an item.
  const SyntaxLine& LineOf(const ItemPlace& place) const;

 private:
  class Builder;

  std::vector<SyntaxLine> lines_;
  std::vector<std::uint32_t> headers_;  // the places of the lines that open sections
  std::vector<Token> tokens_;           // the last one is empty, at the end of the text
  const Script script_;
};

}  // namespace ruxcomp::reader

#endif  // READER_SYNTAX_TREE_H_
