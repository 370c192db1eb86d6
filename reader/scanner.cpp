#include "reader/scanner.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "reader/arena.h"
#include "reader/byte_order_mark.h"
#include "reader/messages.h"
#include "reader/recorded_line.h"
#include "reader/script.h"
#include "reader/value.h"

namespace ruxcomp::reader {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

// What a line looks like outside its quotes.
struct Outline {
  std::string_view content;        // without comment and trailing blanks
  std::size_t equals;              // where the '=' is that ends the key, or kNone
  std::size_t open_quote;          // where the quote is that runs to the line's end, or kNone
  std::uint32_t quotes;            // how many quoted texts it has
  std::uint32_t blanks_at_commas;  // of the value
};

// The characters that an outline looks at; most characters of a script are others.
constexpr std::array<bool, 256> kIsSpecial = [] {
  std::array<bool, 256> turns{};
  for (const char c : {'"', '=', ','}) turns[static_cast<unsigned char>(c)] = true;
  for (const char c : kCommentSigns) turns[static_cast<unsigned char>(c)] = true;
  return turns;
}();

Outline FindOutline(std::string_view line) {
  Outline outline{{}, kNone, kNone, 0, 0};
  std::size_t part = 0;  // where the present part of the value begins
  std::size_t at = 0;
  for (; at < line.size(); ++at) {
    const char c = line[at];
    if (!kIsSpecial[static_cast<unsigned char>(c)]) continue;
    if (c == '"') {
      ++outline.quotes;
      const std::size_t closing = line.find('"', at + 1);
      if (closing == kNone) outline.open_quote = at;
      at = std::min(closing, line.size() - 1);
    } else if (IsCommentSign(c)) {
      if (at != 0 && IsBlank(line[at - 1])) break;
    } else if (c == '=' && outline.equals == kNone) {
      outline.equals = at;
      while (at + 1 < line.size() && IsBlank(line[at + 1])) ++at;
      part = at + 1;
    } else if (c == ',' && outline.equals != kNone) {
      const Separator separator = SeparatorAt(line, at, part);
      outline.blanks_at_commas += static_cast<std::uint32_t>(separator.blanks());
      part = separator.end;
      at = part - 1;
    }
  }
  outline.content = Trim(line.substr(0, at));
  // The blanks between a last comma and a comment do not belong to the value.
  if (part > outline.content.size() && outline.blanks_at_commas != 0) {
    outline.blanks_at_commas -= static_cast<std::uint32_t>(part - outline.content.size());
  }
  return outline;
}

// Takes no lines, and no time.
struct NoRecorder {};

// One walk over a script's text.
template <class Recorder>
class Scanner {
 public:
  Scanner(std::string_view text, const Scanned& scanned, const ProblemSink& report,
          const Recorder& record)
      : text_(text),
        lines_(WithoutMark(text)),
        next_nul_(std::min(text.find('\0'), text.size())),
        arena_(scanned.arena),
        sections_(scanned.sections),
        items_(scanned.items),
        report_(report),
        record_(record) {}

  void Run() {
    while (!lines_.is_at_end()) ScanLine();
    // From now on the items do not move.
    const Item* items = items_.data();
    for (Section& section : sections_) {
      section.items = items;
      items += section.item_count;
    }
  }

 private:
  void ScanLine() {
    const std::string_view line = Trim(TakeLine());
    if (line.empty()) return Record(LineKind::kEmpty, line);
    if (IsCommentSign(line.front())) return Record(LineKind::kComment, line);
    const Outline outline = FindOutline(line);
    if (outline.open_quote != kNone) {
      Report(MessageId::kUnclosedQuote, outline.content.substr(outline.open_quote));
    }
    if (line.front() == '[') {
      OpenSection(outline.content);
      Record(LineKind::kHeader, line, outline);
    } else {
      const bool is_item = AddItem(outline);
      Record(is_item ? LineKind::kItem : LineKind::kDropped, line, outline);
    }
  }

  void Record(LineKind kind, std::string_view line,
              const Outline& outline = {{}, kNone, kNone, 0, 0}) {
    if constexpr (!std::is_same_v<Recorder, NoRecorder>) {
      const bool has_item = kind == LineKind::kItem;
      record_({kind, line_, static_cast<std::uint32_t>(text_.size() - lines_.left()),
               std::exchange(is_interrupted_, false), line, outline.content,
               outline.equals == kNone ? nullptr : &line[outline.equals],
               has_item || kind == LineKind::kHeader ? &sections_.back() : nullptr,
               has_item ? &items_.back() : nullptr, arena_});
    }
  }

  // Takes the next line with the lines that backslashes join to it, without NUL bytes.
  std::string_view TakeLine() {
    line_ = lines_.taken() + 1;
    const std::string_view line = lines_.Take();
    if (!lines_.GoesOn(line) && EndOf(line) <= next_nul_) return line;
    return JoinLines(line);
  }

  std::string_view JoinLines(std::string_view line) {
    is_interrupted_ = true;
    pieces_.clear();
    std::size_t first_nul = kNone;
    for (bool goes_on = true; goes_on;) {
      goes_on = lines_.GoesOn(line);
      if (next_nul_ < EndOf(line)) first_nul = std::min(first_nul, next_nul_);
      AddPieces(goes_on ? line.substr(0, line.size() - 1) : line);
      if (goes_on) line = lines_.Take();
    }
    if (first_nul != kNone) Report(MessageId::kNulByte, text_.substr(first_nul, 1));
    return pieces_.empty() ? std::string_view() : arena_.Join(pieces_);
  }

  // Adds what NUL bytes leave of a line.
  void AddPieces(std::string_view line) {
    while (next_nul_ < EndOf(line)) {
      const std::size_t size = next_nul_ - StartOf(line);
      AddPiece(line.substr(0, size));
      line.remove_prefix(size + 1);
      next_nul_ = std::min(text_.find('\0', next_nul_ + 1), text_.size());
    }
    AddPiece(line);
  }

  void AddPiece(std::string_view piece) {
    if (!piece.empty()) pieces_.push_back(piece);
  }

  void OpenSection(std::string_view content) {
    const std::size_t closing = content.find(']');
    const std::string_view header = content.substr(0, closing == kNone ? closing : closing + 1);
    const std::string_view name = content.substr(1, closing == kNone ? closing : closing - 1);
    if (closing == kNone) {
      Report(MessageId::kUnclosedHeader, header);
    } else if (header.size() != content.size()) {
      Report(MessageId::kTextAfterHeader, Trim(content.substr(header.size())));
    }
    sections_.push_back({DropBlanks(name), header, line_, 0, nullptr});
  }

  std::string_view DropBlanks(std::string_view name) {
    name = Trim(name);
    if (std::none_of(name.begin(), name.end(), IsBlank)) return name;
    pieces_.clear();
    while (!name.empty()) {
      const auto blank = std::find_if(name.begin(), name.end(), IsBlank);
      const auto size = static_cast<std::size_t>(blank - name.begin());
      AddPiece(name.substr(0, size));
      name = Trim(name.substr(size));
    }
    return arena_.Join(pieces_);
  }

  // False: the line is dropped.
  bool AddItem(const Outline& outline) {
    const std::string_view content = outline.content;
    if (sections_.empty()) {
      if (!std::exchange(reported_text_before_section_, true))
        Report(MessageId::kTextBeforeSection, content);
      return false;
    }
    const std::string_view key = Trim(content.substr(0, outline.equals));
    if (key.empty()) {
      Report(MessageId::kMissingKey, content);
      return false;
    }
    const std::size_t value_at = outline.equals == kNone ? content.size() : outline.equals + 1;
    const std::string_view value = Trim(content.substr(value_at));
    items_.push_back({key, value, line_, outline.blanks_at_commas});
    if (outline.blanks_at_commas != 0 && outline.quotes > 1) {
      StoreUnlessPartsAreWhole(items_.back());
    }
    ++sections_.back().item_count;
    return true;
  }

  // A quoted part ends at the next quote; splitting ignores what follows up to the next comma, even
  // quotes. So what is inside quotes for the line may be outside them for splitting, and a part may
  // lose blanks in its middle. Such a value is stored as it is delivered.
  void StoreUnlessPartsAreWhole(Item& item) {
    const std::string cooked = CookedValue(item);
    const Item delivered{item.key, cooked, item.line, 0};
    if (Parts(delivered) == Parts(item)) return;
    pieces_.clear();
    std::string_view left = item.value;
    for (std::string_view rest = cooked; !rest.empty();) {
      const auto differ = std::mismatch(left.begin(), left.end(), rest.begin(), rest.end());
      const auto size = static_cast<std::size_t>(differ.first - left.begin());
      AddPiece(left.substr(0, size));
      rest.remove_prefix(size);
      left = Trim(left.substr(size));  // without the blanks that are not delivered
    }
    item.value = arena_.Join(pieces_);
    item.blanks_at_commas = 0;
  }

  void Report(MessageId message, std::string_view wrong) const {
    const std::uint32_t begin = arena_.OffsetOf(wrong.data());
    report_({message, line_, {begin, arena_.OffsetOf(&wrong.back()) + 1}});
  }

  std::size_t StartOf(std::string_view line) const {
    return static_cast<std::size_t>(line.data() - text_.data());
  }
  std::size_t EndOf(std::string_view line) const { return StartOf(line) + line.size(); }

  const std::string_view text_;
  Lines lines_;           // what is still to be scanned
  std::size_t next_nul_;  // the first NUL byte there, or the text's end
  Arena& arena_;
  std::vector<Section>& sections_;
  std::vector<Item>& items_;
  const ProblemSink& report_;
  const Recorder& record_;
  std::vector<std::string_view> pieces_;  // of what is being joined
  std::uint32_t line_ = 0;  // the number of the line being scanned, the first one of joined lines
  bool reported_text_before_section_ = false;
  bool is_interrupted_ = false;  // the line being scanned
};

}  // namespace

std::string_view WithoutComment(std::string_view line) {
  line = Trim(line);
  if (line.empty() || IsCommentSign(line.front())) return {};
  return FindOutline(line).content;
}

void Scan(std::string_view text, const Scanned& scanned, const ProblemSink& report) {
  Scanner<NoRecorder>(text, scanned, report, {}).Run();
}

void Scan(std::string_view text, const Scanned& scanned, const ProblemSink& report,
          const LineRecorder& record) {
  Scanner<LineRecorder>(text, scanned, report, record).Run();
}

}  // namespace ruxcomp::reader
