// The second pass over the entries: what they refer to must exist.
#include "checker/model_index.h"
#include "checker/number.h"
#include "frontend/entry.h"
#include "frontend/lookup.h"
#include "frontend/report.h"

namespace {

// The ARGNUMBER of an ACTION section: 0 when it is missing or empty. False when its text is no
// number; a defined word is none.
bool ReadArgNumber(const CRUXSection& section, std::uint32_t& number) {
  number = 0;
  const std::string* text = FindText(&section, ENTRY_ARGNUMBER);
  return !text || text->empty() || StringToLong(*text, number);
}

// Which part of a REPEATER entry names the action; its arguments follow.
constexpr std::uint32_t kRepeatedAction = 1;

}  // namespace

std::uint32_t CRUXEntry::ChkActionName(const std::string& action, const CheckContext& context) {
  if (context.index->ByName(SECTION_ACTION, action)) return 1;
  ReportEntry<MessageId::kUnknownAction>(*this, context, action);
  return 0;
}

std::uint32_t CRUXEntry::ChkTableName(const std::string& table, const CheckContext& context) {
  if (context.index->ByName(SECTION_TABLE, table)) return 1;
  ReportEntry<MessageId::kUnknownTable>(*this, context, table);
  return 0;
}

std::uint32_t CRUXEntry::ChkGlobalName(const std::string& global, const CheckContext& context) {
  if (context.index->HasGlobal(global)) return 1;
  ReportEntry<MessageId::kUnknownGlobal>(*this, context, global);
  return 0;
}

std::uint32_t CRUXEntry::ChkArgName(const std::string& arg, const CheckContext& context,
                                    std::uint32_t index) {
  std::uint32_t bound = index;
  const bool bounded = context.section.name != "ACTION" || ReadArgNumber(context.section, bound);
  std::uint32_t number = 0;
  if (bounded && StringToLong(arg.substr(kArgumentPrefix.size()), number) && number <= bound) {
    return 1;
  }
  ReportEntry<MessageId::kInvalidArgument>(*this, context, arg);
  return 0;
}

std::uint32_t CRUXEntry::ChkDigital(const std::string& text, const CheckContext& context) {
  std::uint32_t number = 0;
  if (NumberOrWord(text, number)) return 1;
  ReportEntry<MessageId::kUndefinedWord>(*this, context, text);
  return 0;
}

std::uint32_t CRUXEntry::ChkActionParamNum(const std::string& action, std::uint32_t count,
                                           const CheckContext& context) {
  const ModelIndex::FirstDefinition* called = context.index->ByName(SECTION_ACTION, action);
  if (!called) return 0;  // ChkActionName tells of it
  std::uint32_t expected = 0;
  ReadArgNumber(*called->section, expected);
  if (count == expected) return 1;
  findings::Subject subject{context.section.OriginOf(*this, context.part)};
  if (called->entry) subject.other = called->section->OriginOf(*called->entry, 0);
  ReportAt<MessageId::kArgumentCount>(*this, subject, context.section.name, name, action, expected,
                                      count);
  return 0;
}

std::uint32_t CGESTRING::IsValidEx(const CheckContext& context, unsigned int) {
  const std::string* text = m_RuxEntryData.Get<std::string>();
  if (!text) return 1;
  switch (identifier) {
    case ENTRY_PARENT:
      return ChkParentGroup(*text, context.At(0));
    case ENTRY_PID:
      return ChkParentPelmGroup(*text, context.At(0));
    case ENTRY_ID:
      return ChkListedSensor(*text, context.At(0));
    default:
      return 1;
  }
}

std::uint32_t CGESTRING::ChkParentGroup(const std::string& text, const CheckContext& context) {
  const std::uint32_t kind = context.section.identifier;
  const bool isGroup = kind == SECTION_GROUP;
  if (!isGroup && kind != SECTION_SENSOR) return 1;
  if (isGroup && text == kRootGroup) return 1;  // a root group
  if (context.index->ByName(SECTION_GROUP, text)) return 1;
  ReportEntry<MessageId::kUnknownParentGroup>(*this, context, text);
  return 0;
}

std::uint32_t CGESTRING::ChkParentPelmGroup(const std::string& text, const CheckContext& context) {
  std::uint32_t number = 0;
  const bool isNumber = NumberOrWord(text, number) != 0;
  if (isNumber && (number == 0 || context.index->HasId(SECTION_PELMGROUP, number))) return 1;
  ReportEntry<MessageId::kUnknownParentPelmgroup>(*this, context, text);
  return 0;
}

std::uint32_t CGESTRING::ChkListedSensor(const std::string& text, const CheckContext& context) {
  if (context.section.identifier != SECTION_SENSOR) return 1;
  std::uint32_t number = 0;
  if (NumberOrWord(text, number) && context.index->IsListed(number)) return 1;
  ReportEntry<MessageId::kUnlistedSensor>(*this, context, text);
  return 0;
}

std::uint32_t CGESTRINGLIST::IsValidEx(const CheckContext& context, unsigned int) {
  const TextList* list = m_RuxEntryData.Get<TextList>();
  if (!list || identifier != ENTRY_SENSORS) return 1;
  std::uint32_t ok = 1;
  std::uint32_t part = 0;
  for (const std::string& element : *list) {
    const CheckContext ofElement = context.At(part++);
    std::uint32_t number = 0;
    if (NumberOrWord(element, number) && context.index->HasId(SECTION_SENSOR, number)) continue;
    ReportEntry<MessageId::kUnknownSensor>(*this, ofElement, element);
    ok = 0;
  }
  return ok;
}

std::uint32_t CGEREPEATER::IsValidEx(const CheckContext& context, unsigned int) {
  const RepeaterRecord* record = m_RuxEntryData.Get<RepeaterRecord>();
  if (!record) return 1;
  const auto checkNumber = [&](const std::string& text, std::uint32_t part) {
    const CheckContext ofText = context.At(part);
    return HasPrefix(text, kGlobalPrefix) ? ChkGlobalName(text, ofText) : ChkDigital(text, ofText);
  };
  std::uint32_t ok = ChkActionName(record->Action, context.At(kRepeatedAction));
  ok &= checkNumber(record->Count, 0);
  std::uint32_t part = kRepeatedAction;
  for (const std::string& argument : record->Args) {
    ++part;
    // Arguments are let pass unchecked here; only their number counts.
    if (!HasPrefix(argument, kArgumentPrefix)) ok &= checkNumber(argument, part);
  }
  return ok & ChkActionParamNum(record->Action, static_cast<std::uint32_t>(record->Args.size()),
                                context.At(kRepeatedAction));
}
