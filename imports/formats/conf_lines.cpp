#include "imports/formats/conf_lines.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/ascii.h"
#include "support/failure.h"
#include "support/utf8.h"

namespace rux::imports {
namespace {

constexpr std::string_view kConfBlanks = " \f\r\t\v";
constexpr std::string_view kConfSigns = "+-*/(),@^`";
constexpr std::string_view kEscapes = "abfnrtv";
constexpr std::string_view kEscaped = "\a\b\f\n\r\t\v";

bool IsConfNameCharacter(char c) { return support::IsLetterOrDigit(c) || c == '_'; }

class ConfReader {
 public:
  ConfReader(const std::string& path, std::string_view text) : path_(path), text_(text) {}

  std::vector<ConfLine> Read() {
    while (at_ < text_.size()) {
      if (SkipBlanks() || SkipComment()) continue;
      if (TakeLineEnd()) continue;
      ReadStatement();
    }
    return std::move(lines_);
  }

 private:
  [[noreturn]] void Refuse(const std::string& what) const { RefuseConf(path_, line_, what); }

  bool IsAt(char c) const { return at_ < text_.size() && text_[at_] == c; }

  template <class IsPart>
  std::string_view TakeWhile(IsPart is_part) {
    const std::size_t begin = at_;
    while (at_ < text_.size() && is_part(text_[at_])) ++at_;
    return text_.substr(begin, at_ - begin);
  }

  bool SkipBlanks() {
    return !TakeWhile([](char c) { return kConfBlanks.find(c) != std::string_view::npos; }).empty();
  }

  bool SkipComment() {
    return IsAt('#') && !TakeWhile([](char c) { return c != '\n'; }).empty();
  }

  bool TakeLineEnd() {
    if (!IsAt('\n')) return false;
    ++at_;
    ++line_;
    return true;
  }

  // A backslash, blanks and the end of the line.
  bool TakeContinuation() {
    if (!IsAt('\\')) return false;
    const std::size_t end = text_.find_first_not_of(kConfBlanks, at_ + 1);
    if (end == std::string_view::npos || text_[end] != '\n') Refuse("unexpected backslash");
    at_ = end;
    return TakeLineEnd();
  }

  void ReadStatement() {
    const std::string_view keyword = TakeWhile(support::IsLetter);
    if (keyword.empty()) Refuse("expected a keyword, such as chip or label");
    ConfLine& line = lines_.emplace_back();
    line.number = line_;
    line.keyword = keyword;
    while (at_ < text_.size() && !IsAt('\n')) {
      if (SkipBlanks() || SkipComment() || TakeContinuation()) continue;
      const std::size_t begin = at_;
      ConfToken token = ReadToken();
      token.source = text_.substr(begin, at_ - begin);
      line.tokens.push_back(std::move(token));
    }
  }

  ConfToken ReadToken() {
    if (IsAt('"')) return {ConfToken::Kind::kName, {}, ReadQuoted()};
    if (kConfSigns.find(text_[at_]) != std::string_view::npos) {
      ++at_;
      return {ConfToken::Kind::kSign, {}, ""};
    }
    const std::string_view word = TakeWhile(IsConfNameCharacter);
    const bool is_whole = std::all_of(word.begin(), word.end(), support::IsDigit);
    if (!is_whole) return {ConfToken::Kind::kName, {}, std::string(word)};
    if (!IsAt('.')) {
      if (word.empty()) {
        Refuse("unexpected " + std::string(support::FirstCharacter(text_.substr(at_)).bytes) +
               "; names with others than letters, digits and _ are in quotes");
      }
      return {ConfToken::Kind::kNumber, {}, ""};
    }
    ++at_;
    if (TakeWhile(support::IsDigit).empty()) Refuse("expected a digit after the decimal point");
    return {ConfToken::Kind::kNumber, {}, ""};
  }

  std::string ReadQuoted() {
    std::string name;
    for (++at_; !IsAt('"'); ++at_) {
      if (at_ >= text_.size() || IsAt('\n')) Refuse("a double quote without its end");
      if (!IsAt('\\')) {
        name += text_[at_];
        continue;
      }
      ++at_;
      if (at_ >= text_.size() || IsAt('\n')) Refuse("a double quote without its end");
      const std::size_t escape = kEscapes.find(text_[at_]);
      name += escape == std::string_view::npos ? text_[at_] : kEscaped[escape];
    }
    ++at_;
    if (IsAt('"')) Refuse("two names in quotes without a blank between them");
    return name;
  }

  const std::string& path_;
  const std::string_view text_;
  std::size_t at_ = 0;
  std::uint32_t line_ = 1;
  std::vector<ConfLine> lines_;
};

}  // namespace

std::string_view ConfLine::TextOf(std::size_t begin, std::size_t end) const {
  if (begin >= end) return {};
  const char* const first = tokens[begin].source.data();
  const std::string_view last = tokens[end - 1].source;
  return {first, static_cast<std::size_t>(last.data() + last.size() - first)};
}

bool ConfLine::Has(std::size_t token, ConfToken::Kind kind) const {
  return token < tokens.size() && tokens[token].kind == kind;
}

bool ConfLine::HasSign(std::size_t token, char sign) const {
  return Has(token, ConfToken::Kind::kSign) && tokens[token].source.front() == sign;
}

void ConfLine::RefuseAt(const std::string& path, std::size_t token,
                        std::string_view expected) const {
  const std::string found =
      token < tokens.size() ? std::string(tokens[token].source) : "the end of the line";
  RefuseConf(path, number, "expected " + std::string(expected) + ", found " + found);
}

std::vector<ConfLine> ReadConfLines(const std::string& path, std::string_view text) {
  return ConfReader(path, text).Read();
}

void RefuseConf(const std::string& path, std::uint32_t line, const std::string& what) {
  throw support::Failure(support::ExitStatus::kTrouble, "{}:{}: {}", path, line, what);
}

}  // namespace rux::imports
