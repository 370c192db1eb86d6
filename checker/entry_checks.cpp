// The first pass over the entries: checks each by itself and turns its text into its payload.
// Values have a file of their own.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "findings/origin.h"
#include "frontend/arena.h"
#include "frontend/check_context.h"
#include "frontend/defined_words.h"
#include "frontend/entry.h"
#include "frontend/obj.h"
#include "frontend/report.h"
#include "frontend/text.h"
#include "frontend/value_records.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/parts.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"

namespace ruxcomp::core {

namespace {

// The name of a table row is one cell or "low.high".
bool IsCellRange(std::string_view name) {
  const CellRange range = SplitCellRange(name);
  std::uint32_t low = 0;
  std::uint32_t high = 0;
  if (!StringToLong(range.low, low)) return false;
  if (!StringToLong(range.high, high)) return false;
  return high < kTableCells && low <= high;
}

// Whether a name of the script's own has that form.
bool HasForm(std::string_view name, NameForm form) {
  std::uint32_t number = 0;
  switch (form) {
    case NameForm::kAny:
      break;
    case NameForm::kNoDigitFirst:
      return name[0] < '0' || name[0] > '9';
    case NameForm::kNumber:
      return StringToLong(name, number) != 0;
    case NameForm::kCells:
      return IsCellRange(name);
  }
  return true;
}

}  // namespace

std::uint32_t CRUXEntry::ChkEntryName(const CheckContext& context) {
  const EntryRow* row = FindEntryRow(identifier);
  if (!row) return 0;
  const std::string_view keyword = KeywordOf(*row);
  if (name == keyword) return 1;
  const CheckContext of_key = context.At(findings::Origin::kKey);
  if ((notation & kFreeName) && HasPrefix(name, keyword) &&
      HasForm(name.text().view().substr(keyword.size()), NameFormOf(identifier))) {
    return 1;
  }
  ReportEntry<MessageId::kInvalidEntryName>(*this, of_key);
  return 0;
}

void ReportMissing(const CRUXObj& unfilled, const CheckContext& context) {
  const EntryRow* row = FindEntryRow(unfilled.identifier);  // an unfilled entry has no name itself
  ReportAt<MessageId::kMissingEntry>(unfilled, {context.section.OwnOrigin()}, context.section.name,
                                     row ? KeywordOf(*row) : std::string_view());
}

std::uint32_t CRUXEntry::ChkEntryExist(const CheckContext& context) {
  if (m_RuxEntryData.HasData() || !(notation & kRequired)) return 1;
  ReportMissing(*this, context);
  name = std::string_view();  // a restored entry may have one
  return 0;
}

bool CRUXEntry::PassesCommonChecks(const CheckContext& context, PayloadType type,
                                   std::uint32_t& answer) {
  if (!m_RuxEntryData.HasData()) {
    answer = ChkEntryExist(context);
    return false;
  }
  answer = 0;
  if (!ChkEntryName(context)) return false;
  // A restored entry may hold a payload of another type than its own.
  if (PayloadOf(identifier) == type && PayloadOf(m_RuxEntryData.GetType()) == type) return true;
  ReportEntry<MessageId::kInvalidEntryType>(*this, context);
  return false;
}

bool CRUXEntry::TakeFirstItem(const CheckContext& context, unsigned int pass, Text& text) {
  Splitter parts(ItemText());
  if (parts.IsAtEnd()) {
    ReportEntry<MessageId::kMissingValue>(*this, context);
    return false;
  }
  const std::string_view first = parts.Next();
  if (!parts.IsAtEnd()) ReportEntry<MessageId::kSurplusValues>(*this, context.At(1));
  text = pass == kWholeModel ? Arena::Cut(first) : m_arena.Add(first);
  DropItems(pass);
  return true;
}

std::uint32_t CGEDWORD::IsValid(const CheckContext& context, unsigned int pass) {
  if (m_RuxEntryData.number()) m_RuxEntryData.Set(0u);
  std::uint32_t answer = 0;
  if (!PassesCommonChecks(context, PAYLOAD_DWORD, answer)) return answer;
  Text text;
  if (!TakeFirstItem(context, pass, text)) return 0;
  const CheckContext of_text = context.At(0);
  std::uint32_t number = 0;
  const std::uint32_t is_known = WordOrNumber(text, number);
  m_RuxEntryData.Set(number);
  if (is_known) return 1;
  // A defined word whose text means nothing passes and is 0.
  if (identifier == ENTRY_DEFINED_WORD) return 1;
  ReportEntry<MessageId::kUndefinedWord>(*this, of_text, text);
  return 0;
}

std::uint32_t CGESTRING::IsValid(const CheckContext& context, unsigned int pass) {
  std::uint32_t answer = 0;
  if (!PassesCommonChecks(context, PAYLOAD_STRING, answer)) return answer;
  Text text;
  if (!TakeFirstItem(context, pass, text)) return 0;
  m_RuxEntryData.Set(text);
  // The one text that may be empty.
  if (TextUseOf(context.section.identifier, identifier) == TextUse::kMayBeEmpty) return 1;
  const CheckContext of_text = context.At(0);
  if (text.empty()) {
    ReportEntry<MessageId::kMissingValue>(*this, of_text);
    return 0;
  }
  std::uint32_t number = 0;
  if (!IsNumericString(identifier) || WordOrNumber(text, number)) return 1;
  ReportEntry<MessageId::kUndefinedWord>(*this, of_text, text);
  return 0;
}

std::uint32_t CGESTRINGLIST::IsValid(const CheckContext& context, unsigned int pass) {
  std::uint32_t answer = 0;
  if (!PassesCommonChecks(context, PAYLOAD_STRINGLIST, answer)) return answer;
  const TextList list = ListItems();
  m_RuxEntryData.Set(list);
  DropItems(pass);
  if (IsNumericList(identifier)) return 1;  // its elements are references: second pass
  std::uint32_t ok = 1;
  std::uint32_t part = 0;
  for (const std::string_view element : list) {
    const CheckContext of_element = context.At(part++);
    std::uint32_t number = 0;
    if (WordOrNumber(element, number)) continue;
    ReportEntry<MessageId::kUndefinedWord>(*this, of_element, element);
    ok = 0;
  }
  return ok;
}

std::uint32_t CGEREPEATER::IsValid(const CheckContext& context, unsigned int pass) {
  std::uint32_t answer = 0;
  if (!PassesCommonChecks(context, PAYLOAD_REPEATER, answer)) return answer;
  Splitter parts(ItemText());
  const std::size_t count = CountParts(parts);
  if (count == 0) {
    ReportEntry<MessageId::kMissingValue>(*this, context);
    return 0;
  }
  if (count == 1) {
    ReportEntry<MessageId::kIncompleteRepeater>(*this, context);
    return 0;
  }
  auto& record = m_arena.Make<RepeaterRecord>();
  m_RuxEntryData.Set(record);
  record.Count = parts.Next();
  record.Action = parts.Next();
  record.Args = Keep(parts, count - 2);
  DropItems(pass);
  return 1;
}

}  // namespace ruxcomp::core
