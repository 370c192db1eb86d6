// The checks of VALUE entries: the first pass makes the record of the value's type and fills it
// from the sub-strings, the second follows what the record refers to.
#include <algorithm>

#include "checker/messages.h"
#include "checker/model_index.h"
#include "checker/number.h"
#include "checker/value_fields.h"
#include "frontend/entry.h"
#include "frontend/predefine.h"
#include "frontend/report.h"
#include "ruxcomp/language/bus.h"

namespace {

// Fills a record from the sub-strings behind the type, up to the most that the type may have; a
// list goes on with the surplus where the type keeps it.
struct Filler {
  const ValueType& type;
  const TextList& items;
  std::size_t next = 1;

  void operator()(std::string& text) {
    if (next < std::min<std::size_t>(items.size(), type.most)) text = items[next];
    ++next;
  }
  void operator()(TextList& list) {
    const std::size_t end =
        type.Has(kKeepsSurplus) ? items.size() : std::min<std::size_t>(items.size(), type.most);
    for (; next < end; ++next) list.push_back(items[next]);
  }
};

struct BusFields {
  const std::string& type;
  const std::string& baseAddress;
};

// Calls use(fields) when the record describes an access to a bus.
template <class Use>
void WithBusFields(const ValueRecord& record, Use use) {
  const auto visit = [&](const auto& bus) { use(BusFields{bus.BusType, bus.BaseAddress}); };
  if (const auto* bus = std::get_if<BusRecord>(&record)) visit(*bus);
  if (const auto* bus = std::get_if<BusArgsRecord>(&record)) visit(*bus);
}

// The second pass over one value.
struct ReferenceCheck {
  CGEVALUE& entry;
  const CRUXSection& section;
  const ValueType& type;

  std::uint32_t Run(const CGeValue& value) const;
  void ReportSmbus(const CGeValue& value) const;
  std::uint32_t CheckText(Role role, const std::string& text, std::uint32_t index) const;
  std::uint32_t CheckList(const ValueField& field) const;
  std::uint32_t CheckArgumentCount(const std::vector<ValueField>& fields) const;
};

std::uint32_t ReferenceCheck::Run(const CGeValue& value) const {
  if (type.Has(kOnlySmbus)) ReportSmbus(value);
  const std::vector<ValueField> fields = FieldsOf(value);
  std::uint32_t ok = 1;
  // References first, then plain numbers, then the elements of a list: the order of the messages.
  for (const ValueField& field : fields) {
    if (field.text && field.role != Role::kNumber) ok &= CheckText(field.role, *field.text, 0);
  }
  for (const ValueField& field : fields) {
    if (field.text && field.role == Role::kNumber) ok &= CheckText(field.role, *field.text, 0);
  }
  for (const ValueField& field : fields) {
    if (field.list) ok &= CheckList(field);
  }
  if (type.Has(kCountsArguments)) ok &= CheckArgumentCount(fields);
  return ok;
}

// Told, but not counted as errors: the field checks that follow decide.
void ReferenceCheck::ReportSmbus(const CGeValue& value) const {
  WithBusFields(value.record(), [&](const BusFields& bus) {
    if (bus.baseAddress != kSmbusBaseAddress) ReportAt<msg::kSmbusAddress>(entry);
    if (bus.type != kSmbus) ReportAt<msg::kSmbusType>(entry);
  });
}

std::uint32_t ReferenceCheck::CheckText(Role role, const std::string& text,
                                        std::uint32_t index) const {
  switch (role) {
    case Role::kOperand:
      return entry.IsValidSubValue(text, section, index);
    case Role::kNumber:
      return entry.ChkDigital(text, section);
    case Role::kLocalValue:
      return entry.ChkValueName(text, section);
    case Role::kAction:
      return entry.ChkActionName(text, section);
    case Role::kTable:
      return entry.ChkTableName(text, section);
    case Role::kOperator:  // the first pass has checked it
    case Role::kNone:
    case Role::kRepeatCount:  // of repeater entries
    case Role::kRepeatArgument:
      break;
  }
  return 1;
}

std::uint32_t ReferenceCheck::CheckList(const ValueField& field) const {
  std::uint32_t index = 0;
  // Outside of an action a call may name as many arguments as it passes on.
  if (type.Has(kForwardsArguments) && section.name != "ACTION") {
    index = static_cast<std::uint32_t>(
        std::count_if(field.list->begin(), field.list->end(),
                      [](const std::string& text) { return HasPrefix(text, kArgumentPrefix); }));
  }
  std::uint32_t ok = 1;
  for (const std::string& text : *field.list) ok &= CheckText(field.role, text, index);
  return ok;
}

std::uint32_t ReferenceCheck::CheckArgumentCount(const std::vector<ValueField>& fields) const {
  const auto action = std::find_if(fields.begin(), fields.end(), [](const ValueField& field) {
    return field.role == Role::kAction;
  });
  const auto count = static_cast<std::uint32_t>(fields.back().list->size());
  return entry.ChkActionParamNum(*action->text, count, section);
}

}  // namespace

std::uint32_t CGEVALUE::IsValid(const CRUXSection& section, unsigned int pass) {
  std::uint32_t answer = 0;
  if (!PassesCommonStart(section, PAYLOAD_VALUE, answer)) return answer;
  const TextList items = ListItems();
  if (items.empty()) {
    ReportEntry<msg::kNoValueType>(*this, section);
    return 0;
  }
  const std::string& typeName = items.front();
  std::uint32_t code = 0;
  if (!GetPreDefinedValue(typeName, code)) {
    ReportEntry<msg::kValueTypeInvalid>(*this, section, typeName);
    DropItems(pass);
    return 0;
  }
  CGeValue& value = *m_RuxEntryData.Get<CGeValue>();
  value.Create(code, typeName);

  const ValueType& type = TypeFor(code, items.size() > 1 ? items[1] : std::string());
  if (items.size() < type.least) {
    ReportEntry<msg::kNotEnoughForType>(*this, section, typeName);
    return 0;
  }
  if (items.size() > type.most) ReportEntry<msg::kTooMuchForType>(*this, section, typeName);

  answer = FillRecord(value, type, items, section);
  DropItems(pass);
  return answer;
}

std::uint32_t CGEVALUE::FillRecord(CGeValue& value, const ValueType& type, const TextList& items,
                                   const CRUXSection& section) {
  if (auto* calculation = std::get_if<CalculationRecord>(&value.record())) {
    calculation->Operator = items[1];
    if (!FindOperator(calculation->Operator)) {
      ReportEntry<msg::kOperatorInvalid>(*this, section, calculation->Operator);
      return 0;
    }
  }
  VisitValueFields(value.record(), Filler{type, items});

  std::uint32_t ok = 1;
  WithBusFields(value.record(), [&](const BusFields& bus) {
    // A simple I/O port is its own address.
    std::uint32_t address = 0;
    if (bus.type != kSimpleIoPort) return;
    if (StringToLong(bus.baseAddress, address) && address == 0) return;
    ReportEntry<msg::kBaseAddressNotZero>(*this, section, bus.baseAddress);
    ok = 0;
  });
  return ok;
}

std::uint32_t CGEVALUE::IsValidEx(const CRUXSection& section, unsigned int) {
  const CGeValue* value = m_RuxEntryData.Get<CGeValue>();
  if (!value) return 1;
  return ReferenceCheck{*this, section, FindValueType(value->GetType())}.Run(*value);
}

std::uint32_t CGEVALUE::IsValidSubValue(const std::string& text, const CRUXSection& section,
                                        std::uint32_t index) {
  if (HasPrefix(text, kValuePrefix)) return ChkValueName(text, section);
  if (HasPrefix(text, kArgumentPrefix)) return ChkArgName(text, section, index);
  if (HasPrefix(text, kGlobalPrefix)) return ChkGlobalName(text, section);
  return ChkDigital(text, section);
}

std::uint32_t CGEVALUE::ChkValueName(const std::string& value, const CRUXSection& section) {
  if (ModelIndex::Current().HasValue(section, value)) return 1;
  ReportEntry<msg::kValueNameInvalid>(*this, section, value);
  return 0;
}
