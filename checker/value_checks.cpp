// The checks of VALUE entries: the first pass makes the record of the value's type and fills it
// from the sub-strings, the second follows what the record refers to.
#include <algorithm>

#include "checker/messages.h"
#include "checker/number.h"
#include "checker/value_fields.h"
#include "frontend/entry.h"
#include "frontend/lookup.h"
#include "frontend/predefine.h"
#include "frontend/report.h"

namespace {

// How many sub-strings a value needs and may have, its type's included.
struct ItemCount {
  std::uint32_t least;
  std::uint32_t most;
};

ItemCount CountFor(const ValueType& type, const TextList& items) {
  constexpr std::uint32_t kForComparison = 6;
  if (type.code == kCalculation && items.size() > 1 && GetOperator(items[1]) >= kFirstComparison) {
    return {kForComparison, kForComparison};
  }
  return {type.least, type.most};
}

// Fills a record from the sub-strings behind the type. A list takes all that is left, up to the
// type's limit; a text stays empty where the value may not have so many sub-strings.
struct Filler {
  const TextList& items;
  std::size_t most;
  std::size_t listLimit;
  std::size_t next = 1;

  void operator()(std::string& text) {
    if (next < std::min(items.size(), most)) text = items[next];
    ++next;
  }
  void operator()(TextList& list) {
    for (; next < items.size() && list.size() < listLimit; ++next) list.push_back(items[next]);
  }
};

struct BusFields {
  const std::string& type;
  const std::string& baseAddress;
};

// Calls use(fields) when the record describes an access to a bus.
template <class Use>
void WithBusFields(const ValueRecord& record, Use use) {
  if (const auto* bus = std::get_if<BusRecord>(&record))
    use(BusFields{bus->BusType, bus->BaseAddress});
  if (const auto* bus = std::get_if<BusArgsRecord>(&record)) {
    use(BusFields{bus->BusType, bus->BaseAddress});
  }
}

}  // namespace

std::uint32_t CGEVALUE::IsValid(const CRUXSection& section, unsigned int pass) {
  std::uint32_t answer = 0;
  if (!PassesCommonStart(section, PAYLOAD_VALUE, answer)) return answer;
  if (listItems.empty()) {
    ReportEntry<msg::kNoValueType>(*this, section);
    return 0;
  }
  const std::string typeName = listItems.front();
  std::uint32_t code = 0;
  if (!GetPreDefinedValue(typeName, code)) {
    ReportEntry<msg::kValueTypeInvalid>(*this, section, typeName);
    DropItems(pass);
    return 0;
  }
  CGeValue& value = *m_RuxEntryData.Get<CGeValue>();
  value.Create(code, typeName);

  const ValueType& type = FindValueType(code);
  const ItemCount count = CountFor(type, listItems);
  if (listItems.size() < count.least) {
    ReportEntry<msg::kNotEnoughForType>(*this, section, typeName);
    return 0;
  }
  if (listItems.size() > count.most) ReportEntry<msg::kTooMuchForType>(*this, section, typeName);

  answer = FillRecord(value, count.most, section);
  DropItems(pass);
  return answer;
}

std::uint32_t CGEVALUE::FillRecord(CGeValue& value, std::size_t most, const CRUXSection& section) {
  if (auto* calculation = std::get_if<CalculationRecord>(&value.record())) {
    calculation->Operator = listItems[1];
    if (!GetOperator(calculation->Operator)) {
      ReportEntry<msg::kOperatorInvalid>(*this, section, calculation->Operator);
      return 0;
    }
  }
  VisitValueFields(value.record(),
                   Filler{listItems, most, FindValueType(value.GetType()).listLimit});

  std::uint32_t ok = 1;
  WithBusFields(value.record(), [&](const BusFields& bus) {
    // A simple I/O port is its own address.
    std::uint32_t address = 0;
    if (bus.type != "BUSTYPE_SIMPLEIOPORT") return;
    if (StringToLong(bus.baseAddress, address) && address == 0) return;
    ReportEntry<msg::kBaseAddressNotZero>(*this, section, bus.baseAddress);
    ok = 0;
  });
  return ok;
}

std::uint32_t CGEVALUE::IsValidEx(const CRUXSection& section, unsigned int) {
  const CGeValue* value = m_RuxEntryData.Get<CGeValue>();
  if (!value) return 1;
  const ValueType& type = FindValueType(value->GetType());
  if (type.onlySmbus) ReportSmbus(*value);
  const std::vector<ValueField> fields = FieldsOf(*value);

  // References first, then plain numbers, then the elements of a list: the order of the messages.
  std::uint32_t ok = 1;
  for (const ValueField& field : fields) {
    if (field.text && field.role != Role::kNumber)
      ok &= ChkField(field.role, *field.text, section, 0);
  }
  for (const ValueField& field : fields) {
    if (field.text && field.role == Role::kNumber) ok &= ChkDigital(*field.text, section);
  }
  for (const ValueField& field : fields) {
    if (field.list) ok &= ChkList(type, field, section);
  }
  if (type.countsArguments) {
    const auto action = std::find_if(fields.begin(), fields.end(), [](const ValueField& field) {
      return field.role == Role::kAction;
    });
    const auto count = static_cast<std::uint32_t>(fields.back().list->size());
    ok &= ChkActionParamNum(*action->text, count, section);
  }
  return ok;
}

// Told, but not counted as errors: the field checks that follow decide.
void CGEVALUE::ReportSmbus(const CGeValue& value) {
  WithBusFields(value.record(), [&](const BusFields& bus) {
    if (bus.baseAddress != "0x00") ReportAt<msg::kSmbusAddress>(*this);
    if (bus.type != "BUSTYPE_SMBUS") ReportAt<msg::kSmbusType>(*this);
  });
}

std::uint32_t CGEVALUE::ChkField(Role role, const std::string& text, const CRUXSection& section,
                                 std::uint32_t index) {
  switch (role) {
    case Role::kOperand:
      return IsValidSubValue(text, section, index);
    case Role::kNumber:
      return ChkDigital(text, section);
    case Role::kLocalValue:
      return ChkValueName(text, section);
    case Role::kAction:
      return ChkActionName(text, section);
    case Role::kTable:
      return ChkTableName(text, section);
    case Role::kOperator:  // the first pass has checked it
    case Role::kNone:
      break;
  }
  return 1;
}

std::uint32_t CGEVALUE::ChkList(const ValueType& type, const ValueField& field,
                                const CRUXSection& section) {
  std::uint32_t index = 0;
  // Outside of an action a call may name as many arguments as it passes on.
  if (type.code == kActionCall && section.name != "ACTION") {
    index = static_cast<std::uint32_t>(
        std::count_if(field.list->begin(), field.list->end(),
                      [](const std::string& text) { return HasPrefix(text, "ARG"); }));
  }
  std::uint32_t ok = 1;
  for (const std::string& text : *field.list) ok &= ChkField(field.role, text, section, index);
  return ok;
}

std::uint32_t CGEVALUE::IsValidSubValue(const std::string& text, const CRUXSection& section,
                                        std::uint32_t index) {
  if (HasPrefix(text, "VALUE_")) return ChkValueName(text, section);
  if (HasPrefix(text, "ARG")) return ChkArgName(text, section, index);
  if (HasPrefix(text, "G_")) return ChkGlobalName(text, section);
  return ChkDigital(text, section);
}

std::uint32_t CGEVALUE::ChkValueName(const std::string& value, const CRUXSection& section) {
  if (HasEntryNamed(section, ENTRY_VALUE_OF_ACTION, value)) return 1;
  ReportEntry<msg::kValueNameInvalid>(*this, section, value);
  return 0;
}
