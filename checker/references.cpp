// The second pass over the entries: what they refer to must exist.
#include "checker/messages.h"
#include "checker/model_index.h"
#include "checker/number.h"
#include "frontend/entry.h"
#include "frontend/lookup.h"
#include "frontend/report.h"

namespace {

bool HasNamed(SectionId kind, const std::string& name) {
  return ModelIndex::Current().ByName(kind, name) != nullptr;
}

// The ARGNUMBER of an ACTION section: 0 when it is missing or empty. False when its text is no
// number; a defined word is none.
bool ReadArgNumber(const CRUXSection& section, std::uint32_t& number) {
  number = 0;
  const std::string* text = FindText(&section, ENTRY_ARGNUMBER);
  return !text || text->empty() || StringToLong(*text, number);
}

}  // namespace

std::uint32_t CRUXEntry::ChkActionName(const std::string& action, const CRUXSection& section) {
  if (HasNamed(SECTION_ACTION, action)) return 1;
  ReportEntry<msg::kNoAction>(*this, section, action);
  return 0;
}

std::uint32_t CRUXEntry::ChkTableName(const std::string& table, const CRUXSection& section) {
  if (HasNamed(SECTION_TABLE, table)) return 1;
  ReportEntry<msg::kNoTable>(*this, section, table);
  return 0;
}

std::uint32_t CRUXEntry::ChkGlobalName(const std::string& global, const CRUXSection& section) {
  if (ModelIndex::Current().HasGlobal(global)) return 1;
  ReportEntry<msg::kNoGlobal>(*this, section, global);
  return 0;
}

std::uint32_t CRUXEntry::ChkArgName(const std::string& arg, const CRUXSection& section,
                                    std::uint32_t index) {
  std::uint32_t bound = index;
  const bool bounded = section.name != "ACTION" || ReadArgNumber(section, bound);
  std::uint32_t number = 0;
  if (bounded && StringToLong(arg.substr(kArgumentPrefix.size()), number) && number <= bound)
    return 1;
  ReportEntry<msg::kArgInvalid>(*this, section, arg);
  return 0;
}

std::uint32_t CRUXEntry::ChkDigital(const std::string& text, const CRUXSection& section) {
  std::uint32_t number = 0;
  if (NumberOrWord(text, number)) return 1;
  ReportEntry<msg::kNotANumber>(*this, section, text);
  return 0;
}

std::uint32_t CRUXEntry::ChkActionParamNum(const std::string& action, std::uint32_t count,
                                           const CRUXSection& section) {
  const ModelIndex::First* called = ModelIndex::Current().ByName(SECTION_ACTION, action);
  if (!called) return 0;  // ChkActionName tells of it
  std::uint32_t expected = 0;
  ReadArgNumber(*called->section, expected);
  if (count == expected) return 1;
  ReportEntry<msg::kParamCount>(*this, section, action, expected, count);
  return 0;
}

std::uint32_t CGESTRING::IsValidEx(const CRUXSection& section, unsigned int) {
  const std::string* text = m_RuxEntryData.Get<std::string>();
  if (!text) return 1;
  switch (identifier) {
    case ENTRY_PARENT:
      return ChkParentGroup(*text, section);
    case ENTRY_PID:
      return ChkParentPelmGroup(*text, section);
    case ENTRY_ID:
      return ChkListedSensor(*text, section);
    default:
      return 1;
  }
}

std::uint32_t CGESTRING::ChkParentGroup(const std::string& text, const CRUXSection& section) {
  const bool isGroup = section.identifier == SECTION_GROUP;
  if (!isGroup && section.identifier != SECTION_SENSOR) return 1;
  if (isGroup && text == kRootGroup) return 1;  // a root group
  if (HasNamed(SECTION_GROUP, text)) return 1;
  ReportEntry<msg::kNoParentGroup>(*this, section, text);
  return 0;
}

std::uint32_t CGESTRING::ChkParentPelmGroup(const std::string& text, const CRUXSection& section) {
  std::uint32_t number = 0;
  const bool isNumber = NumberOrWord(text, number) != 0;
  if (isNumber && (number == 0 || ModelIndex::Current().HasId(SECTION_PELMGROUP, number))) return 1;
  ReportEntry<msg::kNoParentPelmGroup>(*this, section, text);
  return 0;
}

std::uint32_t CGESTRING::ChkListedSensor(const std::string& text, const CRUXSection& section) {
  if (section.identifier != SECTION_SENSOR) return 1;
  std::uint32_t number = 0;
  if (NumberOrWord(text, number) && ModelIndex::Current().IsListed(number)) return 1;
  ReportEntry<msg::kSensorNotListed>(*this, section, text);
  return 0;
}

std::uint32_t CGESTRINGLIST::IsValidEx(const CRUXSection& section, unsigned int) {
  const TextList* list = m_RuxEntryData.Get<TextList>();
  if (!list || identifier != ENTRY_SENSORS) return 1;
  std::uint32_t ok = 1;
  for (const std::string& element : *list) {
    std::uint32_t number = 0;
    if (NumberOrWord(element, number) && ModelIndex::Current().HasId(SECTION_SENSOR, number))
      continue;
    ReportEntry<msg::kNoSensor>(*this, section, element);
    ok = 0;
  }
  return ok;
}

std::uint32_t CGEREPEATER::IsValidEx(const CRUXSection& section, unsigned int) {
  const RepeaterRecord* record = m_RuxEntryData.Get<RepeaterRecord>();
  if (!record) return 1;
  const auto checkNumber = [&](const std::string& text) {
    return HasPrefix(text, kGlobalPrefix) ? ChkGlobalName(text, section)
                                          : ChkDigital(text, section);
  };
  std::uint32_t ok = ChkActionName(record->Action, section);
  ok &= checkNumber(record->Count);
  for (const std::string& argument : record->Args) {
    // Arguments are let pass unchecked here; only their number counts.
    if (!HasPrefix(argument, kArgumentPrefix)) ok &= checkNumber(argument);
  }
  return ok & ChkActionParamNum(record->Action, static_cast<std::uint32_t>(record->Args.size()),
                                section);
}
