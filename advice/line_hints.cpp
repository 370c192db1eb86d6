#include "advice/line_hints.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "reader/scanner.h"
#include "reader/script.h"
#include "reader/value.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/keys.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/safe_text.h"
#include "support/utf8.h"

namespace rux::advice {
namespace {

namespace language = ruxcomp::language;
namespace rows = ruxcomp::findings::rows;
using diagnostics::Diagnostic;
using ruxcomp::reader::IsBlank;
using ruxcomp::reader::Trim;
using ruxcomp::reader::WithoutComment;

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::string_view kComments = "comments begin with # or ;";

// The messages that such a slip brings about.
bool MayComeOfSlip(const Diagnostic& diagnostic) {
  constexpr const ruxcomp::findings::MessageRow* kRows[] = {
      &rows::kInvalidEntryName, &rows::kUnknownEntry,      &rows::kMissingValue,
      &rows::kMissingValueType, &rows::kUndefinedWord,     &rows::kUnknownValueType,
      &rows::kUnknownOperator,  &rows::kTooFewOperands,    &rows::kIncompleteRepeater,
      &rows::kUnknownSensor,    &rows::kUnknownAction,     &rows::kUnknownTable,
      &rows::kUnknownGlobal,    &rows::kTextBeforeSection, &rows::kUnknownParentPelmgroup,
      &rows::kSurplusValues};
  return std::find(std::begin(kRows), std::end(kRows), diagnostic.row) != std::end(kRows);
}

bool BeginsForeignComment(std::string_view text) {
  const std::string_view sign = text.substr(0, 2);
  return sign == "//" || sign == "/*" || sign == "*/" || sign == "--";
}

// A comment of another language, at the beginning or after a blank.
bool HasForeignComment(std::string_view text) {
  if (BeginsForeignComment(text)) return true;
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (IsBlank(text[i - 1]) && BeginsForeignComment(text.substr(i))) return true;
  }
  return false;
}

// The first character that looks like a blank, or like nothing, and is text; "" for none.
std::string HiddenCharacterHint(std::string_view text) {
  while (!text.empty()) {
    const support::Character character = support::FirstCharacter(text);
    text.remove_prefix(character.bytes.size());
    if (character.bytes.size() < 2 || !character.is_valid() || support::IsSafe(character)) continue;
    return fmt::format("the text contains U+{:04X}, an invisible character", character.code);
  }
  return "";
}

// "is a comma missing between 1 and 2?" for a part with a blank inside.
std::string MissingCommaHint(std::string_view part) {
  const std::size_t begin = part.find_first_of(" \t");
  if (begin == kNone || begin == 0) return "";
  const std::size_t end = part.find_first_not_of(" \t", begin);
  if (end == kNone) return "";
  const std::string_view next = part.substr(end, part.find_first_of(" \t", end) - end);
  // A backslash above joined an item or a header: a comma would not part them.
  const bool is_item = next.front() == '=' && next.substr(0, 2) != "==";
  if (is_item || next.front() == '[') return "";
  return fmt::format("is a comma missing between {} and {}?", part.substr(0, begin), next);
}

bool TakesSeveralParts(const ruxcomp::reader::Section& section, const ruxcomp::reader::Item& item) {
  const language::SectionKind* kind = language::FindKind(section.name);
  if (kind == nullptr) return false;
  const auto index = static_cast<std::size_t>(&item - section.items);
  const std::size_t row = language::FindKeyRow(*kind, item.key, index);
  const std::uint32_t payload = language::PayloadOf(language::EntryOfRow(*kind, row));
  return payload == language::PAYLOAD_VALUE || payload == language::PAYLOAD_STRINGLIST ||
         payload == language::PAYLOAD_REPEATER;
}

bool HasEquals(const sources::SourceFile& file, const ruxcomp::reader::Item& item) {
  return !item.value.empty() || WithoutComment(file.Line(item.line)).find('=') != kNone;
}

bool EndsWith(std::string_view text, char c) { return !text.empty() && text.back() == c; }

// The line before an item that was to go on in it, and what keeps it from that: a format of the
// number of the line. No format: the script lacks such a line.
struct Cut {
  std::uint32_t line = 0;
  const char* hint = nullptr;
};

// Of a line that joins nothing: does it look as if it should?
Cut CutAfter(const sources::SourceFile& file, std::uint32_t line) {
  const std::string_view text = file.Line(line);
  const std::string_view content = WithoutComment(text);
  const bool has_comment = content.size() != Trim(text).size();
  if (EndsWith(content, ',')) {
    return {line, has_comment ? "to continue line {} here, end it with a backslash, not a comment"
                              : "to continue line {} here, end it with a backslash"};
  }
  if (!EndsWith(content, '\\')) return {};
  return {line, has_comment
                    ? "a comment follows the backslash of line {}, so it does not join this line"
                    : "a blank follows the backslash of line {}, so it does not join this line"};
}

Cut CutBefore(const sources::SourceFile& file, const ruxcomp::reader::Item& item) {
  if (item.line < 2 || HasEquals(file, item)) return {};
  const std::uint32_t before = item.line - 1;
  if (!WithoutComment(file.Line(before)).empty()) return CutAfter(file, before);
  // A backslash joins a line, even if it is empty.
  if (before < 2 || !EndsWith(file.Line(before - 1), '\\')) return {};
  if (!EndsWith(WithoutComment(file.Line(before - 1)), '\\')) return {};
  const bool is_empty = Trim(file.Line(before)).empty();
  return {before - 1, is_empty ? "the backslash of line {} joins only the empty line after it"
                               : "the backslash of line {} joins only the comment after it"};
}

bool IsBetweenApostrophes(std::string_view value) {
  return value.size() > 1 && value.front() == '\'' && value.back() == '\'';
}

std::string HintOnKey(const sources::SourceFile& file, const ruxcomp::reader::Item& item) {
  if (HasForeignComment(item.key)) return std::string(kComments);
  if (const Cut cut = CutBefore(file, item); cut.hint != nullptr) {
    return fmt::format(fmt::runtime(cut.hint), cut.line);
  }
  if (HasEquals(file, item)) return HiddenCharacterHint(item.key);
  if (EndsWith(item.key, ']')) return "a section header begins with [";
  const bool has_colon = item.key.find(':') != kNone;
  return has_colon ? "expected = after the key, found :" : "expected KEY = VALUE, found no =";
}

std::string HintOnValue(const sources::OriginSpot& spot) {
  const std::string_view value = spot.item->value;
  if (HasForeignComment(value)) return std::string(kComments);
  if (IsBetweenApostrophes(value)) return "only double quotes enclose a text";
  std::string hint = HiddenCharacterHint(value);
  if (!hint.empty() || !TakesSeveralParts(*spot.section, *spot.item)) return hint;
  for (const std::string_view part : ruxcomp::reader::Parts(*spot.item)) {
    if (part == "\\") return "a backslash joins lines only as the last character of a line";
    // Between quotes, commas part nothing.
    if (part.data() != value.data() && *(part.data() - 1) == '"') continue;
    if (hint = MissingCommaHint(part); !hint.empty()) return hint;
  }
  return hint;
}

std::string HintOn(const sources::OriginSpot& spot) {
  std::string hint = HintOnKey(*spot.opening->file, *spot.item);
  return hint.empty() ? HintOnValue(spot) : hint;
}

}  // namespace

std::uint32_t LineCutBefore(const sources::SourceFile& file, const ruxcomp::reader::Item& item) {
  return CutBefore(file, item).line;
}

bool AddLineHint(const sources::SourceSet& sources, Diagnostic& diagnostic) {
  if (diagnostic.at.file == nullptr || !MayComeOfSlip(diagnostic)) return false;
  if (diagnostic.row == &rows::kTextBeforeSection) {
    const std::string_view line = diagnostic.at.file->Line(diagnostic.at.first_line);
    if (!HasForeignComment(Trim(line))) return false;
    diagnostic.notes.push_back({std::string(kComments), {}});
    return true;
  }
  const sources::OriginSpot spot = sources.At(diagnostic.origin);
  if (spot.item == nullptr) return false;
  std::string hint = HintOn(spot);
  if (hint.empty()) return false;
  diagnostic.suggestion.reset();
  diagnostic.notes.push_back({std::move(hint), {}});
  return true;
}

}  // namespace rux::advice
