#include "reader/syntax_tree.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "reader/byte_order_mark.h"
#include "reader/recorded_line.h"
#include "reader/scanner.h"
#include "reader/script.h"
#include "reader/value.h"

namespace ruxcomp::reader {

// Makes the tokens of each line that the scan found.
class SyntaxTree::Builder {
 public:
  explicit Builder(SyntaxTree& tree) : tree_(tree) {}

  void operator()(const RecordedLine& line) {
    AddLine(line);
    if (at_ == 0) Begin(line.arena.text());
    breaks_.clear();
    next_break_ = 0;
    if (line.is_interrupted) FindBreaks(line.end);
    if (!line.text.empty()) {
      AddUpTo(TokenKind::kBlanks, BeginOf(line, line.text));
      if (line.kind != LineKind::kComment) AddContent(line);
      AddUpTo(TokenKind::kBlanks, BeginOf(line, line.text.substr(line.content.size() + Gap(line))));
      AddUpTo(TokenKind::kComment, EndOf(line, line.text));
    }
    AddUpTo(TokenKind::kBlanks, LineEndBefore(line.end));
    AddUpTo(TokenKind::kLineEnd, line.end);
  }

 private:
  // Few scripts have shorter ones; the tokens of those are moved once or twice.
  static constexpr std::size_t kBytesPerToken = 4;

  // What interrupts a line.
  struct Break {
    std::uint32_t begin;
    std::uint32_t end;
    TokenKind kind;
  };

  void Begin(std::string_view text) {
    text_ = text;
    tree_.tokens_.reserve(text.size() / kBytesPerToken);
    if (StartsWithMark(text)) Add(TokenKind::kByteOrderMark, kMark.size());
  }

  static std::uint32_t BeginOf(const RecordedLine& line, std::string_view view) {
    return view.empty() ? EndOf(line, line.text) : line.arena.OffsetOf(view.data());
  }
  static std::uint32_t EndOf(const RecordedLine& line, std::string_view view) {
    return line.arena.OffsetOf(&view.back()) + 1;
  }

  // The blanks between what a line has and its comment.
  static std::size_t Gap(const RecordedLine& line) {
    std::size_t gap = 0;
    const std::string_view rest = line.text.substr(line.content.size());
    while (gap < rest.size() && IsBlank(rest[gap])) ++gap;
    return gap;
  }

  std::uint32_t LineEndBefore(std::uint32_t end) const {
    if (end == at_ || text_[end - 1] != '\n') return end;
    const bool has_return = end - at_ > 1 && text_[end - 2] == '\r';
    return end - (has_return ? 2 : 1);
  }

  void AddLine(const RecordedLine& line) {
    std::vector<std::uint32_t>& headers = tree_.headers_;
    if (line.kind == LineKind::kHeader) {
      headers.push_back(static_cast<std::uint32_t>(tree_.lines_.size()));
    }
    tree_.lines_.push_back(
        {static_cast<std::uint32_t>(tree_.tokens_.size()), line.number,
         headers.empty() ? SyntaxLine::kNone : static_cast<std::uint32_t>(headers.size() - 1),
         line.item == nullptr ? SyntaxLine::kNone : line.section->item_count - 1, line.kind});
  }

  void FindBreaks(std::uint32_t end) {
    const std::uint32_t begin = at_;
    const std::string_view whole = text_.substr(begin, end - begin);
    for (Lines lines(whole); !lines.is_at_end();) {
      const std::string_view line = lines.Take();
      const auto line_at = static_cast<std::uint32_t>(line.data() - text_.data());
      for (std::size_t nul = line.find('\0'); nul != std::string_view::npos;
           nul = line.find('\0', nul + 1)) {
        const auto nul_at = line_at + static_cast<std::uint32_t>(nul);
        breaks_.push_back({nul_at, nul_at + 1, TokenKind::kNul});
      }
      if (!lines.GoesOn(line)) continue;
      breaks_.push_back({line_at + static_cast<std::uint32_t>(line.size()) - 1,
                         end - static_cast<std::uint32_t>(lines.left()), TokenKind::kContinuation});
    }
  }

  void AddContent(const RecordedLine& line) {
    switch (line.kind) {
      case LineKind::kHeader:
        AddHeader(line);
        break;
      case LineKind::kItem:
        AddItem(line);
        break;
      default:
        AddRest(EndOf(line, line.content));
    }
  }

  void AddHeader(const RecordedLine& line) {
    const std::string_view header = line.section->header;
    const bool is_closed = header.back() == ']';
    AddUpTo(TokenKind::kOpenBracket, BeginOf(line, header) + 1);
    std::string_view name = header.substr(1, header.size() - (is_closed ? 2 : 1));
    while (!name.empty()) {
      const auto end = std::find_if(name.begin(), name.end(),
                                    [&](char c) { return IsBlank(c) != IsBlank(name.front()); });
      const std::string_view piece = name.substr(0, static_cast<std::size_t>(end - name.begin()));
      AddUpTo(IsBlank(piece.front()) ? TokenKind::kBlanks : TokenKind::kSectionName,
              EndOf(line, piece));
      name.remove_prefix(piece.size());
    }
    if (is_closed) {
      AddUpTo(TokenKind::kCloseBracket, EndOf(line, header));
    }
    AddRest(EndOf(line, line.content));
  }

  void AddItem(const RecordedLine& line) {
    AddUpTo(TokenKind::kKey, EndOf(line, line.item->key));
    if (line.equals != nullptr) {
      const std::uint32_t equals = line.arena.OffsetOf(line.equals);
      AddUpTo(TokenKind::kBlanks, equals);
      AddUpTo(TokenKind::kEquals, equals + 1);
      ForEachPart(*line.item, [&](std::string_view part) {
        if (part.empty()) return;  // of its quotes or commas alone
        AddRest(line.arena.OffsetOf(part.data()));
        AddUpTo(TokenKind::kPart, EndOf(line, part));
      });
    }
    AddRest(EndOf(line, line.content));
  }

  static TokenKind KindOf(char c) {
    if (IsBlank(c)) return TokenKind::kBlanks;
    if (c == ',') return TokenKind::kComma;
    return c == '"' ? TokenKind::kQuote : TokenKind::kDropped;
  }

  // What is not delivered: between parts, after a header.
  void AddRest(std::uint32_t end) {
    while (at_ < end) {
      if (AddBreakHere()) continue;
      const std::uint32_t limit = std::min(end, NextBreak());
      const TokenKind kind = KindOf(text_[at_]);
      std::uint32_t next = at_ + 1;
      if (kind == TokenKind::kBlanks || kind == TokenKind::kDropped) {
        while (next < limit && KindOf(text_[next]) == kind) ++next;
      }
      Add(kind, next);
    }
  }

  std::uint32_t NextBreak() const {
    return next_break_ < breaks_.size() ? breaks_[next_break_].begin
                                        : static_cast<std::uint32_t>(text_.size());
  }

  bool AddBreakHere() {
    if (breaks_.empty() || NextBreak() != at_) return false;
    Add(breaks_[next_break_].kind, breaks_[next_break_].end);
    ++next_break_;
    return true;
  }

  // Few lines are interrupted.
  void AddUpTo(TokenKind kind, std::uint32_t end) {
    while (!breaks_.empty() && NextBreak() < end) {
      Add(kind, NextBreak());
      AddBreakHere();
    }
    Add(kind, end);
  }

  void Add(TokenKind kind, std::size_t end) {
    if (end <= at_) return;
    tree_.tokens_.push_back({at_, kind});
    at_ = static_cast<std::uint32_t>(end);
  }

  SyntaxTree& tree_;
  std::string_view text_;
  std::uint32_t at_ = 0;  // where the next token begins
  std::vector<Break> breaks_;
  std::size_t next_break_ = 0;
};

SyntaxTree::SyntaxTree(std::string text, const ProblemSink& report)
    : script_(std::move(text), report, Builder(*this)) {
  if (lines_.empty() && !this->text().empty()) tokens_.push_back({0, TokenKind::kByteOrderMark});
  tokens_.push_back({static_cast<std::uint32_t>(this->text().size()), TokenKind::kLineEnd});
}

Stretch<SyntaxLine> SyntaxTree::LinesBeforeSections() const {
  const SyntaxLine* const begin = lines_.data();
  return {begin, begin + (headers_.empty() ? lines_.size() : headers_.front())};
}

Stretch<SyntaxLine> SyntaxTree::LinesOf(std::size_t section) const {
  const SyntaxLine* const begin = lines_.data();
  const bool is_last = section + 1 == headers_.size();
  return {begin + headers_[section], begin + (is_last ? lines_.size() : headers_[section + 1])};
}

Stretch<Token> SyntaxTree::TokensOf(const SyntaxLine& line) const {
  const bool is_last = &line == &lines_.back();
  const Token* const begin = tokens_.data();
  return {begin + line.first_token, is_last ? tokens().end() : begin + (&line)[1].first_token};
}

std::string_view SyntaxTree::TextOf(const Token& token) const {
  const Range range = RangeOf(token);
  return std::string_view(text()).substr(range.begin, range.size());
}

Range SyntaxTree::RangeOf(const SyntaxLine& line) const {
  const Stretch<Token> own = TokensOf(line);
  return {own.begin()->begin, own.end()->begin};
}

const SyntaxLine* SyntaxTree::LineAt(std::size_t offset) const {
  if (lines_.empty()) return nullptr;
  const auto begins_after = [&](std::size_t wanted, const SyntaxLine& line) {
    return wanted < tokens_[line.first_token].begin;
  };
  return &*std::upper_bound(lines_.begin(), lines_.end(), offset, begins_after) - 1;
}

const Token* SyntaxTree::TokenAt(std::size_t offset) const {
  const Stretch<Token> all = tokens();
  if (all.empty()) return nullptr;
  const auto begins_after = [](std::size_t wanted, const Token& token) {
    return wanted < token.begin;
  };
  return std::upper_bound(all.begin(), all.end(), offset, begins_after) - 1;
}

const Section* SyntaxTree::SectionOf(const SyntaxLine& line) const {
  return line.section == SyntaxLine::kNone ? nullptr : &script_.sections()[line.section];
}

const Item* SyntaxTree::ItemOf(const SyntaxLine& line) const {
  return line.item == SyntaxLine::kNone ? nullptr : &SectionOf(line)->items[line.item];
}

std::optional<ItemPlace> SyntaxTree::PlaceOf(const SyntaxLine& line) const {
  if (line.item == SyntaxLine::kNone) return std::nullopt;
  return ItemPlace{line.section, line.item};
}

const SyntaxLine& SyntaxTree::LineOf(const ItemPlace& place) const {
  const Stretch<SyntaxLine> own = LinesOf(place.section);
  const std::uint32_t number = script_.sections()[place.section].items[place.item].line;
  const auto is_before = [](const SyntaxLine& line, std::uint32_t wanted) {
    return line.number < wanted;
  };
  return *std::lower_bound(own.begin(), own.end(), number, is_before);
}

}  // namespace ruxcomp::reader
