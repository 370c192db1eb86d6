#include "reader/scanner.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "reader/messages.h"

namespace reader {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsCommentSign(char c) { return c == '#' || c == ';'; }

// A stretch of the script's text. What is made of it is never longer, so it is changed in place.
struct Span {
  char* begin;
  char* end;

  bool empty() const { return begin == end; }
  std::string_view view() const { return {begin, static_cast<std::size_t>(end - begin)}; }
};

// Where `c` stands first, or the end.
char* Find(Span text, char c) {
  if (text.empty()) return text.end;
  void* found = std::memchr(text.begin, c, text.view().size());
  return found == nullptr ? text.end : static_cast<char*>(found);
}

Span Trim(Span text) {
  while (!text.empty() && IsBlank(*text.begin)) ++text.begin;
  while (!text.empty() && IsBlank(text.end[-1])) --text.end;
  return text;
}

// What the quotes of a line leave to be seen of it.
struct Outline {
  Span content;        // without comment and trailing blanks
  char* equals;        // the '=' that ends the key, or the content's end
  bool closes_quotes;  // false: the last quote runs to the line's end
};

// The characters that an outline may turn at; most of a script is none of them.
constexpr std::array<bool, 256> kTurns = [] {
  std::array<bool, 256> turns{};
  for (const char c : {'"', '=', '#', ';'}) turns[static_cast<unsigned char>(c)] = true;
  return turns;
}();

Outline FindOutline(Span line) {
  Outline outline{line, nullptr, true};
  char* at = line.begin;
  for (; at != line.end; ++at) {
    if (!kTurns[static_cast<unsigned char>(*at)]) continue;
    if (*at == '"') {
      at = Find({at + 1, line.end}, '"');
      outline.closes_quotes = at != line.end;
      if (!outline.closes_quotes) break;
    } else if (*at == '=' && outline.equals == nullptr) {
      outline.equals = at;
    } else if (IsCommentSign(*at) && at != line.begin && IsBlank(at[-1])) {
      break;
    }
  }
  outline.content = Trim({line.begin, at});
  if (outline.equals == nullptr) outline.equals = outline.content.end;
  return outline;
}

Span DropBlanks(Span text) {
  text.end = std::remove_if(text.begin, text.end, IsBlank);
  return text;
}

// Drops the blanks around commas that stand outside quotes. A quote without end runs to the text's
// end.
Span DropBlanksAroundCommas(Span text) {
  char* out = Find(text, ',');
  if (out == text.end) return text;
  out = text.begin;
  for (char* in = text.begin; in != text.end;) {
    if (*in == '"') {
      char* quote_end = Find({in + 1, text.end}, '"');
      if (quote_end != text.end) ++quote_end;
      out = std::copy(in, quote_end, out);
      in = quote_end;
    } else if (*in == ',') {
      while (out != text.begin && IsBlank(out[-1])) --out;
      *out++ = *in++;
      while (in != text.end && IsBlank(*in)) ++in;
    } else {
      *out++ = *in++;
    }
  }
  return {text.begin, out};
}

// One walk over a script's text.
class Scanner {
 public:
  Scanner(std::string* text, std::vector<Section>* sections, std::vector<Item>* items,
          const ProblemSink& report)
      : rest_{text->data(), text->data() + text->size()},
        sections_(*sections),
        items_(*items),
        report_(report) {}

  void Run() {
    // Room for the items of most scripts; where lines are shorter, it grows.
    constexpr std::size_t kBytesPerItem = 16;
    items_.reserve(rest_.view().size() / kBytesPerItem);
    if (rest_.view().substr(0, kByteOrderMark.size()) == kByteOrderMark) {
      rest_.begin += kByteOrderMark.size();
    }
    while (!rest_.empty()) ScanLine();
    // Only now do the items stand still.
    const Item* items = items_.data();
    for (Section& section : sections_) {
      section.items = items;
      items += section.item_count;
    }
  }

 private:
  // Takes the next line as it stands in the file, without its end.
  Span TakePhysicalLine() {
    char* line_feed = Find(rest_, '\n');
    Span line{rest_.begin, line_feed};
    ++lines_taken_;
    if (line_feed == rest_.end) {
      rest_.begin = rest_.end;
      return line;
    }
    rest_.begin = line_feed + 1;
    if (!line.empty() && line.end[-1] == '\r') --line.end;
    return line;
  }

  // Whether the line that was taken last goes on in the next one; the last line has none to go on
  // in.
  bool GoesOn(Span line) const { return !rest_.empty() && !line.empty() && line.end[-1] == '\\'; }

  // Takes the next line with the lines that backslashes join to it.
  Span TakeLine() {
    line_ = lines_taken_ + 1;
    Span line = TakePhysicalLine();
    bool goes_on = GoesOn(line);
    while (goes_on) {
      const Span next = TakePhysicalLine();
      goes_on = GoesOn(next);  // asked before the copy, which may overwrite `next`
      line.end = std::copy(next.begin, next.end, line.end - 1);
    }
    return line;
  }

  Span DropNulBytes(Span line) {
    char* first = Find(line, '\0');
    if (first == line.end) return line;
    Tell(kFormat<MessageId::kNulByte>);
    line.end = std::remove(first, line.end, '\0');
    return line;
  }

  void ScanLine() {
    const Span line = Trim(DropNulBytes(TakeLine()));
    if (line.empty() || IsCommentSign(*line.begin)) return;
    const Outline outline = FindOutline(line);
    if (!outline.closes_quotes) Tell(kFormat<MessageId::kUnclosedQuote>);
    if (*line.begin == '[') {
      OpenSection(outline.content);
    } else {
      AddItem(outline);
    }
  }

  void OpenSection(Span header) {
    const Span inside{header.begin + 1, Find(header, ']')};
    if (inside.end == header.end) {
      Tell(kFormat<MessageId::kUnclosedHeader>);
    } else if (inside.end + 1 != header.end) {
      Tell(kFormat<MessageId::kTextAfterHeader>);
    }
    sections_.push_back({DropBlanks(inside).view(), line_, 0, nullptr});
  }

  void AddItem(const Outline& outline) {
    const Span content = outline.content;
    if (sections_.empty()) {
      if (!std::exchange(told_text_before_section_, true))
        Tell(kFormat<MessageId::kTextBeforeSection>);
      return;
    }
    const Span key = Trim({content.begin, outline.equals});
    if (key.empty()) return Tell(kFormat<MessageId::kMissingKey>);
    Span value{content.end, content.end};
    if (outline.equals != content.end) {
      value = DropBlanksAroundCommas(Trim({outline.equals + 1, content.end}));
    }
    items_.push_back({key.view(), value.view(), line_});
    ++sections_.back().item_count;
  }

  void Tell(const char* message) const { report_(message, line_); }

  Span rest_;  // what is still to be scanned
  std::vector<Section>& sections_;
  std::vector<Item>& items_;
  const ProblemSink& report_;
  std::uint32_t lines_taken_ = 0;
  std::uint32_t line_ = 0;  // the number of the line being scanned, the first one of joined lines
  bool told_text_before_section_ = false;
};

}  // namespace

Script::Script(std::string text, const ProblemSink& report) : text_(std::move(text)) {
  Scanner(&text_, &sections_, &items_, report).Run();
}

}  // namespace reader
