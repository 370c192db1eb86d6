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

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::string_view kComments = "comments begin with # or ;";

// The messages that such a slip brings about.
bool MayComeOfSlip(const Diagnostic& diagnostic) {
  constexpr const ruxcomp::findings::MessageRow* kRows[] = {
      &rows::kInvalidEntryName, &rows::kUnknownEntry,      &rows::kMissingValue,
      &rows::kMissingValueType, &rows::kUndefinedWord,     &rows::kUnknownValueType,
      &rows::kUnknownOperator,  &rows::kTooFewOperands,    &rows::kIncompleteRepeater,
      &rows::kUnknownSensor,    &rows::kUnknownAction,     &rows::kUnknownTable,
      &rows::kUnknownGlobal,    &rows::kTextBeforeSection, &rows::kUnknownParentPelmgroup};
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

std::string_view WithoutBlanksAtEnd(std::string_view text) {
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

bool HasEquals(const sources::SourceFile& file, const ruxcomp::reader::Item& item) {
  return !item.value.empty() || file.Line(item.line).find('=') != kNone;
}

std::string HintOnKey(const sources::SourceFile& file, const ruxcomp::reader::Item& item) {
  if (HasForeignComment(item.key)) return std::string(kComments);
  if (const std::uint32_t cut = LineCutBefore(file, item); cut != 0) {
    const bool has_backslash = WithoutBlanksAtEnd(file.Line(cut)).back() == '\\';
    return has_backslash
               ? fmt::format(
                     "a blank follows the backslash of line {}, so it does not join this line", cut)
               : fmt::format("to continue line {} here, end it with a backslash", cut);
  }
  if (HasEquals(file, item)) return HiddenCharacterHint(item.key);
  const bool has_colon = item.key.find(':') != kNone;
  return has_colon ? "expected = after the key, found :" : "expected KEY = VALUE, found no =";
}

std::string HintOnValue(const sources::OriginSpot& spot) {
  const std::string_view value = spot.item->value;
  if (HasForeignComment(value)) return std::string(kComments);
  std::string hint = HiddenCharacterHint(value);
  if (!hint.empty() || !TakesSeveralParts(*spot.section, *spot.item)) return hint;
  for (const std::string_view part : ruxcomp::reader::Parts(*spot.item)) {
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
  if (item.line < 2 || HasEquals(file, item)) return 0;
  const std::string_view before = WithoutBlanksAtEnd(file.Line(item.line - 1));
  const bool is_cut = !before.empty() && (before.back() == ',' || before.back() == '\\');
  return is_cut && !ruxcomp::reader::IsCommentLine(before) ? item.line - 1 : 0;
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
