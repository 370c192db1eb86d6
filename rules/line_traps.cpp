// Lines that backslashes join and comments cut otherwise than it looks.
#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <set>

#include "reader/value.h"
#include "rules/trap_rules.h"

namespace rux::rules {
namespace {

constexpr std::string_view kBlanks = " \t";

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(kBlanks) == std::string_view::npos;
}

bool IsComment(std::string_view line) {
  const std::size_t first = line.find_first_not_of(kBlanks);
  return first != std::string_view::npos && (line[first] == '#' || line[first] == ';');
}

// Whether a comment stands in the line, at its beginning or behind a blank, outside quotes.
bool HasComment(std::string_view line) {
  if (IsComment(line)) return true;
  bool is_quoted = false;
  for (std::size_t i = 1; i < line.size(); ++i) {
    if (line[i] == '"') is_quoted = !is_quoted;
    const bool is_sign = line[i] == '#' || line[i] == ';';
    if (is_sign && !is_quoted && kBlanks.find(line[i - 1]) != std::string_view::npos) return true;
  }
  return false;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool MayBeInKey(char c) {
  return IsDigit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == '.';
}

// Whether the line looks like an item or a header. Only an operator has a second '='.
bool LooksLikeItem(std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
  if (line.substr(0, 1) == "[") return line.find(']') != std::string_view::npos;
  const auto key_end = std::find_if_not(line.begin(), line.end(), MayBeInKey);
  if (key_end == line.begin()) return false;
  line.remove_prefix(static_cast<std::size_t>(key_end - line.begin()));
  line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
  return line.substr(0, 1) == "=" && line.substr(0, 2) != "==";
}

bool EndsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

// Whether the item's value is a text, such as a name: of a number, a comment cuts nothing off.
bool HoldsText(const sources::SourceSpot& spot) {
  const KindKeys* kind = FindKeysOf(spot.section->name);
  if (kind == nullptr) return false;
  const auto index = static_cast<std::uint32_t>(spot.item - spot.section->items);
  const std::uint32_t key = KeyOf(*kind, spot.item->key, index);
  return compiled::PayloadClassOf(key) == compiled::PayloadClass::kText &&
         !compiled::IsNumeric(key) && key != compiled::kKeyTABLE_ROW;
}

class LineTraps : public TrapRules {
 public:
  explicit LineTraps(TrapReport& report) : report_(report) {}

  bool BeginSection(const sources::SourceSection&, std::uint32_t) override { return false; }

  void End(const sources::SourceSet& sources) override {
    std::set<const sources::SourceFile*> seen;
    for (const sources::SourceSection& section : sources.sections()) {
      if (seen.insert(section.file).second) SeeFile(*section.file);
    }
  }

 private:
  void SeeFile(const sources::SourceFile& file) {
    // Rare, so that lines are looked at only where there is one.
    const std::string& text = file.text();
    if (text.find("\\\n") != std::string::npos || text.find("\\\r\n") != std::string::npos) {
      SeeJoinedLines(file);
    }
    for (std::size_t at = text.find('#'); at != std::string::npos; at = text.find('#', at + 1)) {
      const bool has_number = at + 1 < text.size() && IsDigit(text[at + 1]);
      if (has_number && at > 0 && kBlanks.find(text[at - 1]) != std::string_view::npos)
        SeeNumberSign(file, at);
    }
  }

  void SeeJoinedLines(const sources::SourceFile& file) {
    bool is_joined = false;   // the line belongs to the one above
    bool is_comment = false;  // and that one ends in a comment, which was told of
    bool is_quoted = false;   // or in quotes
    bool has_value = false;   // or in a value
    for (std::uint32_t number = 1; number < file.line_count(); ++number) {
      const std::string_view line = file.Line(number);
      if (!is_joined) is_comment = is_quoted = has_value = false;
      const bool joins = !line.empty() && line.back() == '\\';
      has_value |= line.find('=') != std::string_view::npos;
      if (std::count(line.begin(), line.end(), '"') % 2 != 0) is_quoted = !is_quoted;
      is_joined = joins;
      if (!joins) continue;
      const std::string_view next = file.Line(number + 1);
      if (is_comment) continue;
      is_comment = HasComment(line);
      if (is_comment && !IsBlank(next) && !IsComment(next)) {
        Tell(kJoinedComment, file, number,
             "the comment ends in a backslash, so that the next line belongs to it");
      } else if (has_value && !is_comment && !is_quoted && LooksLikeItem(next)) {
        Tell(kJoinedItem, file, number + 1,
             "a backslash joins this line to the one above: it is no item of its own");
      }
    }
  }

  // Whether the sign cuts the text of a value off.
  void SeeNumberSign(const sources::SourceFile& file, std::size_t at) {
    const std::uint32_t number = file.LineAt(at);
    const std::optional<sources::SourceSpot> spot = file.At(number);
    if (!spot || spot->item == nullptr || !HoldsText(*spot)) return;
    const std::string_view value = spot->item->value;
    const std::string_view line = file.Line(number);
    const auto column = static_cast<std::size_t>(file.text().data() + at - line.data());
    const std::string_view before = line.substr(0, column);
    const std::size_t end = before.find_last_not_of(kBlanks) + 1;
    const bool is_cut = !value.empty() && spot->item->blanks_at_commas == 0 &&
                        value.find('"') == std::string_view::npos &&
                        EndsWith(before.substr(0, end), value);
    if (!is_cut) return;
    const std::vector<std::string_view> parts = reader::Parts(*spot->item);
    const KindKeys& kind = *FindKeysOf(spot->section->name);
    const ScriptItem item{&file, spot->section, spot->item, kind.schema->kind, 0, parts};
    report_.Add(kNumberSign, item,
                fmt::format("{} begins a comment: what is left is {}", line.substr(column), value),
                value);
  }

  void Tell(const findings::MessageRow& row, const sources::SourceFile& file, std::uint32_t line,
            std::string_view text) {
    report_.Add(row, text).at = diagnostics::LocationIn(file, file.RangeOfLine(line));
  }

  TrapReport& report_;
};

}  // namespace

std::unique_ptr<TrapRules> MakeLineTraps(const DefinedWordTable&, TrapReport& report) {
  return std::make_unique<LineTraps>(report);
}

}  // namespace rux::rules
