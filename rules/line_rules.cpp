// Lines that backslashes join and comments cut otherwise than it looks.
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "reader/value.h"
#include "rules/rule_list.h"

namespace rux::rules {
namespace {

bool IsBlankLine(std::string_view line) { return reader::Trim(line).empty(); }

bool IsCommentSign(char c) { return c == '#' || c == ';'; }

bool IsComment(std::string_view line) {
  const std::string_view text = reader::Trim(line);
  return !text.empty() && IsCommentSign(text.front());
}

// Whether the line has a comment: at its beginning, or after a blank outside quotes.
bool HasComment(std::string_view line) {
  if (IsComment(line)) return true;
  bool is_quoted = false;
  for (std::size_t i = 1; i < line.size(); ++i) {
    if (line[i] == '"') is_quoted = !is_quoted;
    if (IsCommentSign(line[i]) && !is_quoted && reader::IsBlank(line[i - 1])) return true;
  }
  return false;
}

bool MayBeInKey(char c) {
  return IsDigit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == '.';
}

// Whether the line looks like an item or a header. Only an operator has a second '='.
bool LooksLikeItem(std::string_view line) {
  line = reader::Trim(line);
  if (line.substr(0, 1) == "[") return line.find(']') != std::string_view::npos;
  const auto key_end = std::find_if_not(line.begin(), line.end(), MayBeInKey);
  if (key_end == line.begin()) return false;
  line.remove_prefix(static_cast<std::size_t>(key_end - line.begin()));
  line = reader::Trim(line);
  return line.substr(0, 1) == "=" && line.substr(0, 2) != "==";
}

bool EndsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
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

// Goes through the lines of a file for those that a backslash joins to the one above.
class JoinedLines {
 public:
  JoinedLines(const ScriptFile& file, RuleReport& report) : file_(file), report_(report) {}

  void Check() {
    for (std::uint32_t number = 1; number < file_.line_count(); ++number) {
      const std::string_view line = file_.Line(number);
      if (!is_joined_) is_comment_ = is_quoted_ = has_value_ = false;
      has_value_ |= line.find('=') != std::string_view::npos;
      if (std::count(line.begin(), line.end(), '"') % 2 != 0) is_quoted_ = !is_quoted_;
      is_joined_ = !line.empty() && line.back() == '\\';
      if (is_joined_ && !is_comment_) CheckJoined(number, line, file_.Line(number + 1));
    }
  }

 private:
  void CheckJoined(std::uint32_t number, std::string_view line, std::string_view next) {
    is_comment_ = HasComment(line);
    if (is_comment_ && !IsBlankLine(next) && !IsComment(next)) {
      report_.Add(RuleId::kJoinedComment, Place{&file_, number},
                  "the comment ends in a backslash, so that the next line belongs to it");
    } else if (has_value_ && !is_comment_ && !is_quoted_ && LooksLikeItem(next)) {
      report_.Add(RuleId::kJoinedItem, Place{&file_, number + 1},
                  "a backslash joins this line to the one above: it is no item of its own");
    }
  }

  const ScriptFile& file_;
  RuleReport& report_;
  bool is_joined_ = false;   // the line belongs to the one above,
  bool is_comment_ = false;  // which ends in a comment, already reported,
  bool is_quoted_ = false;   // or in quotes,
  bool has_value_ = false;   // or in a value
};

class LineRule : public Rule {
 public:
  explicit LineRule(const RuleContext& context) : report_(context.report) {}

  void EndScript(const Script& script) override {
    for (const ScriptFile* file : FilesOf(script)) CheckFile(*file);
  }

 private:
  void CheckFile(const ScriptFile& file) {
    // Rare, so that lines are looked at only where there is one.
    const std::string& text = file.text();
    if (text.find("\\\n") != std::string::npos || text.find("\\\r\n") != std::string::npos) {
      JoinedLines(file, report_).Check();
    }
    for (std::size_t at = text.find('#'); at != std::string::npos; at = text.find('#', at + 1)) {
      const bool has_number = at + 1 < text.size() && IsDigit(text[at + 1]);
      if (has_number && at > 0 && reader::IsBlank(text[at - 1])) CheckNumberSign(file, at);
    }
  }

  // Whether the sign cuts the text of a value off.
  void CheckNumberSign(const ScriptFile& file, std::size_t at) {
    const std::uint32_t number = file.LineAt(at);
    const std::optional<ItemRef> item = FindItemOnLine(file, number);
    if (!item || !HoldsText(*item)) return;
    const std::string_view value = item->item->value;
    const std::string_view line = file.Line(number);
    const auto column = static_cast<std::size_t>(file.text().data() + at - line.data());
    const bool is_cut = !value.empty() && item->item->blanks_at_commas == 0 &&
                        value.find('"') == std::string_view::npos &&
                        EndsWith(reader::Trim(line.substr(0, column)), value);
    if (!is_cut) return;
    report_.Add(RuleId::kNumberSign, *item,
                fmt::format("{} begins a comment: what is left is {}", line.substr(column), value),
                value);
  }

  RuleReport& report_;
};

}  // namespace

std::unique_ptr<Rule> MakeLineRule(const RuleContext& context) {
  return std::make_unique<LineRule>(context);
}

}  // namespace rux::rules
