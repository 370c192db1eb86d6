// The second pass over the entries: what they refer to must exist.
#include <cstdint>
#include <optional>
#include <string_view>

#include "checker/model_index.h"
#include "findings/finding.h"
#include "frontend/check_context.h"
#include "frontend/defined_words.h"
#include "frontend/entry.h"
#include "frontend/report.h"
#include "frontend/section.h"
#include "frontend/text.h"
#include "frontend/text_errors.h"
#include "frontend/value_records.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/names.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"

namespace ruxcomp::core {

namespace {

// The ARGNUMBER of an ACTION section: 0 when it is missing or empty. False when its text is not
// a number; a defined word is not one.
bool ReadArgNumber(const CRUXSection& section, std::uint32_t& number) {
  number = 0;
  const std::optional<Text> text = FindText(&section, ENTRY_ARGNUMBER);
  return !text || text->empty() || StringToLong(*text, number);
}

// Whether a section has the name that a text refers to, or the text needs no section.
bool HasName(const Reference& reference, std::string_view text, ModelIndex& index) {
  return (reference.unless == RefersUnless::kRoot && text == kRootGroup) ||
         index.ByName(reference.target, text) != nullptr;
}

// The same for a number, which is there when has(number).
template <class Has>
bool HasNumber(const Reference& reference, std::string_view text, Has has) {
  std::uint32_t number = 0;
  if (!NumberOrWord(text, number)) return false;
  return (reference.unless == RefersUnless::kZero && number == 0) || has(number);
}
bool HasId(const Reference& reference, std::string_view text, ModelIndex& index) {
  return HasNumber(reference, text,
                   [&](std::uint32_t id) { return index.HasId(reference.target, id); });
}
bool IsListed(const Reference& reference, std::string_view text, ModelIndex& index) {
  return HasNumber(reference, text, [&](std::uint32_t id) { return index.IsListed(id); });
}

// What entries can refer to: how it is found, and what reports that it is missing.
struct Referent {
  SectionId target;
  EntryId key;
  bool (*is_there)(const Reference& reference, std::string_view text, ModelIndex& index);
  void (*report)(const CRUXEntry& entry, const CheckContext& context, const std::string_view& text);
};
constexpr Referent kReferents[] = {
    {SECTION_GROUP, ENTRY_NAME, HasName,
     ReportEntry<MessageId::kUnknownParentGroup, std::string_view>},
    {SECTION_SENSOR, ENTRY_ID, HasId, ReportEntry<MessageId::kUnknownSensor, std::string_view>},
    {SECTION_PELMGROUP, ENTRY_ID, HasId,
     ReportEntry<MessageId::kUnknownParentPelmgroup, std::string_view>},
    {SECTION_PELMGROUP, ENTRY_SENSORS, IsListed,
     ReportEntry<MessageId::kUnlistedSensor, std::string_view>},
};

constexpr const Referent* FindReferent(const Reference& reference) {
  return FindRow(kReferents, [&](const Referent& row) {
    return row.target == reference.target && row.key == reference.key;
  });
}
static_assert(!HasRow(kReferences,
                      [](const Reference& row) { return FindReferent(row) == nullptr; }),
              "every REFERS_TO row of templates.def has a referent here");

// Which part of a REPEATER entry names the action; its arguments follow.
constexpr std::uint32_t kRepeatedAction = 1;

}  // namespace

std::uint32_t CRUXEntry::ChkActionName(std::string_view action, const CheckContext& context) {
  if (context.index->ByName(SECTION_ACTION, action)) return 1;
  ReportEntry<MessageId::kUnknownAction>(*this, context, action);
  return 0;
}

std::uint32_t CRUXEntry::ChkTableName(std::string_view table, const CheckContext& context) {
  if (context.index->ByName(SECTION_TABLE, table)) return 1;
  ReportEntry<MessageId::kUnknownTable>(*this, context, table);
  return 0;
}

std::uint32_t CRUXEntry::ChkGlobalName(std::string_view global, const CheckContext& context) {
  if (context.index->HasGlobal(global)) return 1;
  ReportEntry<MessageId::kUnknownGlobal>(*this, context, global);
  return 0;
}

std::uint32_t CRUXEntry::ChkArgName(std::string_view arg, const CheckContext& context,
                                    std::uint32_t index) {
  std::uint32_t bound = index;
  const bool bounded = !IsAction(context.section) || ReadArgNumber(context.section, bound);
  std::uint32_t number = 0;
  if (bounded && StringToLong(TextAfter(arg, kArgumentPrefix.size()), number) && number <= bound) {
    return 1;
  }
  ReportEntry<MessageId::kInvalidArgument>(*this, context, arg);
  return 0;
}

std::uint32_t CRUXEntry::ChkDigital(std::string_view text, const CheckContext& context) {
  std::uint32_t number = 0;
  if (NumberOrWord(text, number)) return 1;
  ReportEntry<MessageId::kUndefinedWord>(*this, context, text);
  return 0;
}

std::uint32_t CRUXEntry::ChkActionParamNum(std::string_view action, std::uint32_t count,
                                           const CheckContext& context) {
  const ModelIndex::FirstDefinition* called =
      context.index->ByNameOrNameless(SECTION_ACTION, action);
  if (!called) return 0;  // ChkActionName reports it
  std::uint32_t expected = 0;
  ReadArgNumber(*called->section, expected);
  if (count == expected) return 1;
  findings::Subject subject{context.section.OriginOf(*this, context.part)};
  if (called->entry) subject.other = called->section->OriginOf(*called->entry, 0);
  ReportAt<MessageId::kArgumentCount>(*this, subject, context.section.name, name, action, expected,
                                      count);
  return 0;
}

std::uint32_t CRUXEntry::ChkReference(const Reference& reference, std::string_view text,
                                      const CheckContext& context) {
  const Referent& referent = *FindReferent(reference);
  if (referent.is_there(reference, text, *context.index)) return 1;
  referent.report(*this, context, text);
  return 0;
}

std::uint32_t CGESTRING::IsValidEx(const CheckContext& context, unsigned int) {
  const std::optional<Text> text = m_RuxEntryData.text();
  const Reference* reference = FindReference(context.section.identifier, identifier);
  return !text || !reference ? 1 : ChkReference(*reference, *text, context.At(0));
}

std::uint32_t CGESTRINGLIST::IsValidEx(const CheckContext& context, unsigned int) {
  const std::optional<TextList> list = m_RuxEntryData.list();
  const Reference* reference = FindReference(context.section.identifier, identifier);
  if (!list || !reference) return 1;
  std::uint32_t ok = 1;
  std::uint32_t part = 0;
  for (const std::string_view element : *list) {
    ok &= ChkReference(*reference, element, context.At(part++));
  }
  return ok;
}

std::uint32_t CGEREPEATER::IsValidEx(const CheckContext& context, unsigned int) {
  const RepeaterRecord* record = m_RuxEntryData.repeater();
  if (!record) return 1;
  const auto check = [&](Role role, std::string_view text, std::uint32_t part) {
    const CheckContext of_text = context.At(part);
    const NamedEntry* named = FindNamed(role, text);
    if (!named) return ChkDigital(text, of_text);
    // Arguments pass unchecked here; only their number counts.
    return named->entry == ENTRY_ARGNUMBER ? 1 : ChkGlobalName(text, of_text);
  };
  std::uint32_t ok = ChkActionName(record->Action, context.At(kRepeatedAction));
  ok &= check(Role::kRepeatCount, record->Count, 0);
  std::uint32_t part = kRepeatedAction;
  for (const std::string_view argument : record->Args) {
    ok &= check(Role::kRepeatArgument, argument, ++part);
  }
  return ok & ChkActionParamNum(record->Action, static_cast<std::uint32_t>(record->Args.size()),
                                context.At(kRepeatedAction));
}

}  // namespace ruxcomp::core
