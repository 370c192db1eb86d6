// Lines that backslashes join and comments cut where it does not look so.
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reader/scanner.h"
#include "reader/value.h"
#include "rules/rule.h"
#include "rules/rule_list.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/keys.h"
#include "ruxcomp/language/sections.h"

namespace rux::rules {
namespace {

using ruxcomp::reader::IsCommentLine;

constexpr std::size_t kNone = std::string_view::npos;

bool IsBlankLine(std::string_view line) { return ruxcomp::reader::Trim(line).empty(); }

// Whether the line has a comment: at its beginning, or after a blank outside quotes.
bool HasComment(std::string_view line) {
  return ruxcomp::reader::WithoutComment(line).size() != ruxcomp::reader::Trim(line).size();
}

bool MayBeInKey(char c) {
  return IsDigit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == '.';
}

// Whether the line looks like an item or a header. Only an operator has a second '='.
bool LooksLikeItem(std::string_view line) {
  line = ruxcomp::reader::Trim(line);
  if (line.substr(0, 1) == "[") return line.find(']') != kNone;
  const auto key_end = std::find_if_not(line.begin(), line.end(), MayBeInKey);
  if (key_end == line.begin()) return false;
  line.remove_prefix(static_cast<std::size_t>(key_end - line.begin()));
  line = ruxcomp::reader::Trim(line);
  return line.substr(0, 1) == "=" && line.substr(0, 2) != "==";
}

std::string_view WithoutBlanksAtEnd(std::string_view text) {
  while (!text.empty() && ruxcomp::reader::IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

// Whether the item's value is a text, such as a name: of a number, a comment cuts nothing off.
bool HoldsText(const ItemRef& item) {
  const language::SectionKind* kind = language::FindKind(item.section->name);
  if (kind == nullptr) return false;
  const auto index = static_cast<std::size_t>(item.item - item.section->items);
  const std::size_t row = language::FindKeyRow(*kind, item.name(), index);
  const std::uint32_t entry = language::EntryOfRow(*kind, row);
  return language::PayloadOf(entry) == language::PAYLOAD_STRING &&
         !language::IsNumericString(entry) && entry != language::ENTRY_TABLE_ROW;
}

// Lines that backslashes join, from the first one on.
class JoinedLines {
 public:
  JoinedLines(const ScriptFile& file, RuleReport& report) : file_(file), report_(report) {}

  // Checks a line that goes on in the next one.
  void Check(std::string_view line, std::string_view next) {
    has_value_ |= line.find('=') != kNone;
    if (std::count(line.begin(), line.end(), '"') % 2 != 0) is_quoted_ = !is_quoted_;
    if (is_comment_) return;
    is_comment_ = HasComment(line);
    if (is_comment_ && !IsBlankLine(next) && !IsCommentLine(next)) {
      report_.Add(RuleId::kJoinedComment, PlaceOf(line),
                  "the comment ends with a backslash: the next line is part of it");
    } else if (has_value_ && !is_comment_ && !is_quoted_ && LooksLikeItem(next)) {
      report_.Add(RuleId::kJoinedItem, PlaceOf(next),
                  "a backslash joins this line to the line above: it is not an item of its own");
    }
  }

 private:
  Place PlaceOf(std::string_view line) const {
    return {&file_, file_.LineAt(static_cast<std::size_t>(line.data() - file_.text().data()))};
  }

  const ScriptFile& file_;
  RuleReport& report_;
  bool is_comment_ = false;  // a line so far ends in a comment, which is reported
  bool is_quoted_ = false;   // or in quotes
  bool has_value_ = false;   // or in a value
};

class LineRule : public Rule {
 public:
  explicit LineRule(const RuleContext& context) : report_(context.report) {}

  void EndScript(const Script& script) override {
    for (const ScriptFile* file : FilesOf(script)) CheckFile(*file);
  }

 private:
  // Both are rare: lines are looked at only where there is one.
  void CheckFile(const ScriptFile& file) {
    const std::string_view text = file.text();
    for (std::size_t at = text.find('\\'); at != kNone; at = text.find('\\', at)) {
      at = EndsLine(text, at + 1) ? CheckJoinedLines(file, at) : at + 1;
    }
    for (std::size_t at = text.find('#'); at != kNone; at = text.find('#', at + 1)) {
      const bool has_number = at + 1 < text.size() && IsDigit(text[at + 1]);
      const bool is_comment = has_number && at > 0 && ruxcomp::reader::IsBlank(text[at - 1]);
      // The rest of the line is the comment.
      if (is_comment && CheckNumberSign(file, at)) at = EndOfLine(text, at);
    }
  }

  static std::size_t EndOfLine(std::string_view text, std::size_t at) {
    return std::min(text.find('\n', at), text.size() - 1);
  }

  static bool EndsLine(std::string_view text, std::size_t at) {
    return text.substr(at, 1) == "\n" || text.substr(at, 2) == "\r\n";
  }

  // Checks the line with that byte and those that are joined to it. Returns where they end.
  std::size_t CheckJoinedLines(const ScriptFile& file, std::size_t at) {
    const std::string_view text = file.text();
    ruxcomp::reader::Lines lines(text.substr(text.rfind('\n', at) + 1));
    JoinedLines joined(file, report_);
    std::string_view line = lines.Take();
    while (lines.GoesOn(line)) {
      const std::string_view next = lines.Take();
      joined.Check(line, next);
      line = next;
    }
    return static_cast<std::size_t>(line.data() - text.data()) + line.size();
  }

  // Whether the sign cuts the text of a value off.
  bool CheckNumberSign(const ScriptFile& file, std::size_t at) {
    const std::optional<ItemRef> item = FindItemOnLine(file, file.LineAt(at));
    if (!item || !HoldsText(*item)) return false;
    const std::string_view value = item->item->value;
    const std::string_view text = file.text();
    // Only the first one on a line follows the value: the others must not cost as much as it is
    // long.
    const std::string_view before = WithoutBlanksAtEnd(text.substr(0, at));
    const bool follows_value =
        !value.empty() && value.data() + value.size() == before.data() + before.size();
    const bool is_cut =
        follows_value && item->item->blanks_at_commas == 0 && value.find('"') == kNone;
    if (!is_cut) return false;
    const std::string_view comment = ruxcomp::reader::Lines(text.substr(at)).Take();
    report_.Add(
        RuleId::kNumberSign, *item,
        [&] { return fmt::format("{} begins a comment, leaving {}", comment, value); }, value);
    return true;
  }

  RuleReport& report_;
};

// The first text beside the quotes of a part of the value; empty when there is none.
std::string_view FindTextBesideQuotes(std::string_view value) {
  std::size_t next = 0;
  for (std::size_t quote = value.find('"'); quote != kNone; quote = value.find('"', next)) {
    const std::size_t begin = value.rfind(',', quote) + 1;  // kNone + 1 is 0
    const std::string_view before = ruxcomp::reader::Trim(value.substr(begin, quote - begin));
    if (!before.empty()) return before;
    const std::size_t closing = value.find('"', quote + 1);
    if (closing == kNone) return {};
    const std::size_t comma = value.find(',', closing);
    const std::string_view after =
        ruxcomp::reader::Trim(value.substr(closing + 1, comma - closing - 1));
    if (!after.empty() || comma == kNone) return after;
    next = comma + 1;
  }
  return {};
}

// The parts, each in quotes.
std::string Quoted(const std::vector<std::string_view>& parts) {
  std::string text;
  for (const std::string_view part : parts) {
    text += fmt::format("{}\"{}\"", text.empty() ? "" : ", ", part);
  }
  return text;
}

}  // namespace

std::unique_ptr<Rule> MakeLineRule(const RuleContext& context) {
  return std::make_unique<LineRule>(context);
}

void CheckTextBesideQuotes(const ScriptItem& item, const RuleContext& context) {
  const std::string_view value = item.item->value;
  // A value that is its own first part has no quotes.
  if (item.first().size() == value.size()) return;
  const std::string_view beside = FindTextBesideQuotes(value);
  if (beside.empty()) return;
  context.report.Add(
      RuleId::kTextBesideQuotes, item,
      [&] {
        return fmt::format("text beside double quotes is dropped, leaving {}", Quoted(item.parts));
      },
      beside);
}

}  // namespace rux::rules
