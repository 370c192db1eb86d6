#include "format/untouched.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "reader/recorded_line.h"
#include "reader/syntax_tree.h"
#include "reader/value.h"
#include "sources/comment_marks.h"

namespace rux::format {
namespace {

using ruxcomp::reader::LineKind;
using ruxcomp::reader::Stretch;
using ruxcomp::reader::SyntaxLine;
using ruxcomp::reader::SyntaxTree;
using ruxcomp::reader::Token;
using ruxcomp::reader::TokenKind;

// One pass over the tokens of a value: whether each part is a text without quotes or, whole, within
// one pair of them, and continuations are only between parts.
class Value {
 public:
  bool IsPlain(const Token& token) {
    switch (token.kind) {
      case TokenKind::kComma:
        return EndPart(false);
      case TokenKind::kContinuation:
        if (state_ == kQuoted || !is_plain_line_) return false;
        is_plain_line_ = false;
        is_broken_ = true;
        return true;
      case TokenKind::kPart:
        return Begin() && (state_ == kNothing ? Enter(kText) : state_ == kQuoted);
      case TokenKind::kQuote:
        if (state_ == kQuoted) return Enter(kClosed);
        return Begin() && state_ == kNothing && Enter(kQuoted);
      default:
        return true;
    }
  }

  // A continuation before nothing is none between parts.
  bool EndPart(bool is_last) {
    if (is_last && is_broken_) return false;
    is_plain_line_ = true;
    is_broken_ = false;
    return Enter(kNothing);
  }

 private:
  enum State { kNothing, kText, kQuoted, kClosed };  // what the part has so far

  bool Enter(State state) {
    state_ = state;
    return true;
  }

  // What belongs to a part, which must not be broken after its beginning.
  bool Begin() {
    if (is_broken_ && state_ != kNothing) return false;
    is_plain_line_ = true;
    is_broken_ = false;
    return true;
  }

  State state_ = kNothing;
  bool is_plain_line_ = true;  // there is something on this line
  bool is_broken_ = false;     // since the last comma or the beginning of the part
};

bool HasSign(std::string_view text) {
  return std::any_of(text.begin(), text.end(), ruxcomp::reader::IsCommentSign);
}

bool HasControl(std::string_view text) {
  return std::any_of(text.begin(), text.end(),
                     [](char c) { return (c >= '\0' && c < ' ' && c != '\t') || c == '\x7F'; });
}

class Looks {
 public:
  Looks(const SyntaxTree& tree, const SyntaxLine& line)
      : tree_(tree), tokens_(tree.TokensOf(line)) {}

  bool ArePlain() const {
    Value value;
    bool is_value = false;
    bool is_quoted = false;
    for (const Token& token : tokens_) {
      is_quoted = token.kind == TokenKind::kQuote ? !is_quoted : is_quoted;
      if (!MayOccur(token, is_value, is_quoted)) return false;
      if (is_value && !value.IsPlain(token)) return false;
      is_value = is_value || token.kind == TokenKind::kEquals;
    }
    return value.EndPart(true) && !NeedsBlanksAtEnd();
  }

 private:
  bool MayOccur(const Token& token, bool is_value, bool is_quoted) const {
    const std::string_view text = tree_.TextOf(token);
    switch (token.kind) {
      case TokenKind::kDropped:
        return false;
      case TokenKind::kContinuation:
        return is_value;
      case TokenKind::kKey:
      case TokenKind::kSectionName:
        return !HasSign(text) && !HasControl(text) && text.find('"') == std::string_view::npos;
      case TokenKind::kPart:
        return !HasControl(text) && (is_quoted || !HasSign(text));
      default:
        return true;
    }
  }

  // Without the blanks after it, a backslash would join the next line, and a carriage return would
  // be part of the line end.
  bool NeedsBlanksAtEnd() const {
    for (const Token* token = tokens_.end(); token != tokens_.begin();) {
      --token;
      if (token->kind == TokenKind::kBlanks || token->kind == TokenKind::kLineEnd) continue;
      const char last = tree_.TextOf(*token).back();
      return last == '\\' || last == '\r';
    }
    return false;
  }

  const SyntaxTree& tree_;
  const Stretch<Token> tokens_;
};

// The comment of a line; empty: none.
std::string_view CommentOf(const SyntaxTree& tree, const SyntaxLine& line) {
  for (const Token& token : tree.TokensOf(line)) {
    if (token.kind == TokenKind::kComment) return tree.TextOf(token);
  }
  return {};
}

}  // namespace

std::vector<bool> UntouchedLines(const SyntaxTree& tree) {
  std::vector<bool> untouched;
  untouched.reserve(tree.lines().size());
  const bool may_switch = tree.text().find(kOffMark) != std::string::npos;
  bool is_off = false;
  for (const SyntaxLine& line : tree.lines()) {
    const std::string_view comment = may_switch ? CommentOf(tree, line) : std::string_view();
    const bool has_off = sources::HasMark(comment, kOffMark);
    const bool was_off = is_off;
    if (line.kind == LineKind::kComment) {
      is_off = has_off || (is_off && !sources::HasMark(comment, kOnMark));
    }
    untouched.push_back(was_off || is_off || has_off || !Looks(tree, line).ArePlain());
  }
  return untouched;
}

}  // namespace rux::format
