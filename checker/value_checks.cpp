// The checks of VALUE entries: the first pass makes the record of the value's type and fills it
// from the sub-strings, the second follows what the record refers to.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include "checker/model_index.h"
#include "checker/value_fields.h"
#include "frontend/check_context.h"
#include "frontend/defined_words.h"
#include "frontend/entry.h"
#include "frontend/report.h"
#include "frontend/section.h"
#include "frontend/value_records.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/values.h"

namespace ruxcomp::core {

namespace {

// Fills a record from the sub-strings after the type, up to the most that the type may have; a
// list goes on with the surplus where the type keeps it.
struct RecordFiller {
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

// Which part of a value of that type the field is.
constexpr std::uint32_t PartOf(const ValueType& type, std::string_view field) {
  std::uint32_t part = 1;  // the type's own is 0
  for (const Field& each : type.fields) {
    if (std::string_view(each.name) == field) break;
    ++part;
  }
  return part;
}

constexpr bool HasField(const ValueType& type, std::string_view field) {
  return PartOf(type, field) <= type.fields.size();
}
static_assert(!HasRow(kValueTypes,
                      [](const ValueType& type) {
                        return type.Has(kOnlySmbus) &&
                               !(HasField(type, "BusType") && HasField(type, "BaseAddress"));
                      }),
              "an SMBUS access has the fields of one");

struct BusFields {
  const std::string& type;
  const std::string& base_address;
};

template <class Record, class = void>
constexpr bool kIsBusAccess = false;
template <class Record>
constexpr bool
    kIsBusAccess<Record, std::void_t<decltype(Record::BusType), decltype(Record::BaseAddress)>> =
        true;

// Calls use(fields) when the record describes an access to a bus.
template <class Use>
void WithBusFields(const ValueRecord& record, Use use) {
  std::visit(
      [&](const auto& bus) {
        if constexpr (kIsBusAccess<std::decay_t<decltype(bus)>>) {
          use(BusFields{bus.BusType, bus.BaseAddress});
        }
      },
      record);
}

// The second pass over one value.
struct ReferenceCheck {
  CGEVALUE& entry;
  const CheckContext& context;
  const ValueType& type;

  std::uint32_t Run(const CGeValue& value) const;
  void ReportSmbus(const CGeValue& value) const;
  std::uint32_t CheckTexts(const std::vector<ValueField>& fields, bool numbers) const;
  std::uint32_t CheckText(Role role, const std::string& text, std::uint32_t index,
                          std::uint32_t part) const;
  std::uint32_t CheckList(const ValueField& field, std::uint32_t part) const;
  std::uint32_t CheckArgumentCount(const std::vector<ValueField>& fields) const;
};

std::uint32_t ReferenceCheck::Run(const CGeValue& value) const {
  if (type.Has(kOnlySmbus)) ReportSmbus(value);
  const std::vector<ValueField> fields = FieldsOf(value);
  std::uint32_t ok = 1;
  // References first, then plain numbers, then the elements of a list: the order of the messages.
  ok &= CheckTexts(fields, false);
  ok &= CheckTexts(fields, true);
  if (!fields.empty() && fields.back().list) {
    ok &= CheckList(fields.back(), static_cast<std::uint32_t>(fields.size()));
  }
  if (type.Has(kCountsArguments)) ok &= CheckArgumentCount(fields);
  return ok;
}

// The part of a field is its ordinal after the type.
std::uint32_t ReferenceCheck::CheckTexts(const std::vector<ValueField>& fields,
                                         bool numbers) const {
  std::uint32_t ok = 1;
  std::uint32_t part = 0;
  for (const ValueField& field : fields) {
    ++part;
    if (!field.text || (field.role == Role::kNumber) != numbers) continue;
    ok &= CheckText(field.role, *field.text, 0, part);
  }
  return ok;
}

// Reported, but not counted as errors: the field checks that follow decide.
void ReferenceCheck::ReportSmbus(const CGeValue& value) const {
  WithBusFields(value.record(), [&](const BusFields& bus) {
    if (bus.base_address != kSmbusBaseAddress) {
      ReportAt<MessageId::kSmbusAddress>(
          entry, {context.section.OriginOf(entry, PartOf(type, "BaseAddress"))});
    }
    if (bus.type != kSmbus) {
      ReportAt<MessageId::kSmbusBusType>(
          entry, {context.section.OriginOf(entry, PartOf(type, "BusType"))});
    }
  });
}

std::uint32_t ReferenceCheck::CheckText(Role role, const std::string& text, std::uint32_t index,
                                        std::uint32_t part) const {
  const CheckContext of_text = context.At(part);
  switch (role) {
    case Role::kOperand:
      return entry.IsValidSubValue(text, of_text, index);
    case Role::kNumber:
      return entry.ChkDigital(text, of_text);
    case Role::kLocalValue:
      return entry.ChkValueName(text, of_text);
    case Role::kAction:
      return entry.ChkActionName(text, of_text);
    case Role::kTable:
      return entry.ChkTableName(text, of_text);
    case Role::kOperator:  // the first pass has checked it
    case Role::kNone:
    case Role::kRepeatCount:  // of repeater entries
    case Role::kRepeatArgument:
      break;
  }
  return 1;
}

std::uint32_t ReferenceCheck::CheckList(const ValueField& field, std::uint32_t part) const {
  std::uint32_t index = 0;
  // Outside of an action a call may name as many arguments as it passes on.
  if (type.Has(kForwardsArguments) && !IsAction(context.section)) {
    index = static_cast<std::uint32_t>(
        std::count_if(field.list->begin(), field.list->end(),
                      [](const std::string& text) { return HasPrefix(text, kArgumentPrefix); }));
  }
  std::uint32_t ok = 1;
  for (const std::string& text : *field.list) ok &= CheckText(field.role, text, index, part++);
  return ok;
}

std::uint32_t ReferenceCheck::CheckArgumentCount(const std::vector<ValueField>& fields) const {
  const auto action = std::find_if(fields.begin(), fields.end(), [](const ValueField& field) {
    return field.role == Role::kAction;
  });
  const auto count = static_cast<std::uint32_t>(fields.back().list->size());
  const auto part = static_cast<std::uint32_t>(action - fields.begin()) + 1;
  return entry.ChkActionParamNum(*action->text, count, context.At(part));
}

}  // namespace

std::uint32_t CGEVALUE::IsValid(const CheckContext& context, unsigned int pass) {
  std::uint32_t answer = 0;
  if (!PassesCommonChecks(context, PAYLOAD_VALUE, answer)) return answer;
  const TextList items = ListItems();
  if (items.empty()) {
    ReportEntry<MessageId::kMissingValueType>(*this, context);
    return 0;
  }
  const std::string& type_name = items.front();
  std::uint32_t code = 0;
  if (!GetPreDefinedValue(type_name, code)) {
    ReportEntry<MessageId::kUnknownValueType>(*this, context.At(0), type_name);
    DropItems(pass);
    return 0;
  }
  CGeValue& value = *m_RuxEntryData.Get<CGeValue>();
  value.Create(code, type_name);

  const ValueType& type = TypeFor(code, items.size() > 1 ? items[1] : std::string());
  if (items.size() < type.least) {
    ReportEntry<MessageId::kTooFewOperands>(*this, context.At(0), type_name);
    return 0;
  }
  if (items.size() > type.most) {
    ReportEntry<MessageId::kTooManyOperands>(*this, context.At(type.most), type_name);
  }

  answer = FillRecord(value, type, items, context);
  DropItems(pass);
  return answer;
}

std::uint32_t CGEVALUE::FillRecord(CGeValue& value, const ValueType& type, const TextList& items,
                                   const CheckContext& context) {
  if (auto* calculation = std::get_if<CalculationRecord>(&value.record())) {
    calculation->Operator = items[1];
    if (!FindOperator(calculation->Operator)) {
      ReportEntry<MessageId::kUnknownOperator>(*this, context.At(1), calculation->Operator);
      return 0;
    }
  }
  VisitValueFields(value.record(), RecordFiller{type, items});

  std::uint32_t ok = 1;
  WithBusFields(value.record(), [&](const BusFields& bus) {
    // A simple I/O port is its own address.
    std::uint32_t address = 0;
    if (bus.type != kSimpleIoPort) return;
    const CheckContext of_address = context.At(PartOf(type, "BaseAddress"));
    if (StringToLong(bus.base_address, address) && address == 0) return;
    ReportEntry<MessageId::kNonzeroBaseAddress>(*this, of_address, bus.base_address);
    ok = 0;
  });
  return ok;
}

std::uint32_t CGEVALUE::IsValidEx(const CheckContext& context, unsigned int) {
  const CGeValue* value = m_RuxEntryData.Get<CGeValue>();
  if (!value) return 1;
  return ReferenceCheck{*this, context, FindValueType(value->GetType())}.Run(*value);
}

std::uint32_t CGEVALUE::IsValidSubValue(const std::string& text, const CheckContext& context,
                                        std::uint32_t index) {
  if (HasPrefix(text, kValuePrefix)) return ChkValueName(text, context);
  if (HasPrefix(text, kArgumentPrefix)) return ChkArgName(text, context, index);
  if (HasPrefix(text, kGlobalPrefix)) return ChkGlobalName(text, context);
  return ChkDigital(text, context);
}

std::uint32_t CGEVALUE::ChkValueName(const std::string& value, const CheckContext& context) {
  if (context.index->HasValue(context.section, value)) return 1;
  ReportEntry<MessageId::kUnknownValue>(*this, context, value);
  return 0;
}

}  // namespace ruxcomp::core
