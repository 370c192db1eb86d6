// The checks of values: the first pass makes the record of the value's type and fills it from the
// parts, the second follows what the record refers to.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <variant>

#include "checker/model_index.h"
#include "checker/value_fields.h"
#include "frontend/check_context.h"
#include "frontend/defined_words.h"
#include "frontend/entry.h"
#include "frontend/report.h"
#include "frontend/section.h"
#include "frontend/text.h"
#include "frontend/value_records.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/names.h"
#include "ruxcomp/language/parts.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/values.h"

namespace ruxcomp::core {

namespace {

// Fills a record from the parts after the type, up to the most that the type may have; a list also
// takes the surplus where the type keeps it.
template <class Keep>
struct RecordFiller {
  Splitter& parts;
  std::size_t left;     // how many of them are still to be taken
  std::size_t surplus;  // how many more a list takes
  Keep keep;            // makes a list of the next parts

  void operator()(std::string_view& text) {
    if (left == 0) return;
    text = parts.Next();
    --left;
  }
  void operator()(TextList& list) { list = keep(parts, left + surplus); }
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
  std::string_view type;
  std::string_view base_address;
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
  std::uint32_t CheckTexts(const ValueFields& fields, bool numbers) const;
  std::uint32_t CheckText(Role role, std::string_view text, std::uint32_t index,
                          std::uint32_t part) const;
  std::uint32_t CheckList(const ValueField& field, std::uint32_t part) const;
  std::uint32_t CheckArgumentCount(const ValueFields& fields) const;
};

std::uint32_t ReferenceCheck::Run(const CGeValue& value) const {
  if (type.Has(kOnlySmbus)) ReportSmbus(value);
  const ValueFields fields(value);
  std::uint32_t ok = 1;
  // References first, then plain numbers, then the elements of a list: the order of the messages.
  ok &= CheckTexts(fields, false);
  ok &= CheckTexts(fields, true);
  if (fields.HasList()) {
    ok &= CheckList(fields.back(), static_cast<std::uint32_t>(fields.end() - fields.begin()));
  }
  if (type.Has(kCountsArguments)) ok &= CheckArgumentCount(fields);
  return ok;
}

// The part of a field is its ordinal after the type.
std::uint32_t ReferenceCheck::CheckTexts(const ValueFields& fields, bool numbers) const {
  std::uint32_t ok = 1;
  std::uint32_t part = 0;
  for (const ValueField& field : fields) {
    ++part;
    if (field.is_list || (field.role == Role::kNumber) != numbers) continue;
    ok &= CheckText(field.role, field.text, 0, part);
  }
  return ok;
}

// Reports what does not count as an error: the field checks that follow decide.
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

std::uint32_t ReferenceCheck::CheckText(Role role, std::string_view text, std::uint32_t index,
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
  // Outside of an action, a call may name ARGn up to the number of arguments that it passes on.
  if (type.Has(kForwardsArguments) && !IsAction(context.section)) {
    index = static_cast<std::uint32_t>(
        std::count_if(field.list.begin(), field.list.end(),
                      [](std::string_view text) { return HasPrefix(text, kArgumentPrefix); }));
  }
  std::uint32_t ok = 1;
  for (const std::string_view text : field.list) ok &= CheckText(field.role, text, index, part++);
  return ok;
}

std::uint32_t ReferenceCheck::CheckArgumentCount(const ValueFields& fields) const {
  const auto action = std::find_if(fields.begin(), fields.end(), [](const ValueField& field) {
    return field.role == Role::kAction;
  });
  const auto count = static_cast<std::uint32_t>(fields.back().list.size());
  const auto part = static_cast<std::uint32_t>(action - fields.begin()) + 1;
  return entry.ChkActionParamNum(action->text, count, context.At(part));
}

}  // namespace

std::uint32_t CGEVALUE::IsValid(const CheckContext& context, unsigned int pass) {
  std::uint32_t answer = 0;
  if (!PassesCommonChecks(context, PAYLOAD_VALUE, answer)) return answer;
  Splitter parts(ItemText());
  if (parts.IsAtEnd()) {
    ReportEntry<MessageId::kMissingValueType>(*this, context);
    return 0;
  }
  const std::string_view type_name = parts.Next();
  std::uint32_t code = 0;
  if (!GetPreDefinedValue(type_name, code)) {
    ReportEntry<MessageId::kUnknownValueType>(*this, context.At(0), type_name);
    DropItems(pass);
    return 0;
  }
  auto& value = m_arena.Make<CGeValue>(code, type_name);
  m_RuxEntryData.Set(value);

  const std::size_t count = CountParts(parts);
  const ValueType& type = TypeFor(code, count > 0 ? Splitter(parts).Next() : std::string_view());
  if (count + 1 < type.least) {
    ReportEntry<MessageId::kTooFewOperands>(*this, context.At(0), type_name);
    return 0;
  }
  if (count + 1 > type.most) {
    ReportEntry<MessageId::kTooManyOperands>(*this, context.At(type.most), type_name);
  }

  answer = FillRecord(value, type, parts, count, context);
  DropItems(pass);
  return answer;
}

std::uint32_t CGEVALUE::FillRecord(CGeValue& value, const ValueType& type, Splitter parts,
                                   std::size_t count, const CheckContext& context) {
  if (auto* calculation = std::get_if<CalculationRecord>(&value.record())) {
    calculation->Operator = Splitter(parts).Next();
    if (!FindOperator(calculation->Operator)) {
      ReportEntry<MessageId::kUnknownOperator>(*this, context.At(1), calculation->Operator);
      return 0;
    }
  }
  const std::size_t taken = std::min<std::size_t>(count, type.most - 1);
  const std::size_t surplus = type.Has(kKeepsSurplus) ? count - taken : 0;
  VisitValueFields(value.record(), RecordFiller<decltype(&Keep)>{parts, taken, surplus, Keep});

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
  const CGeValue* value = m_RuxEntryData.value();
  if (!value) return 1;
  return ReferenceCheck{*this, context, FindValueType(value->GetType())}.Run(*value);
}

std::uint32_t CGEVALUE::IsValidSubValue(std::string_view text, const CheckContext& context,
                                        std::uint32_t index) {
  const NamedEntry* named = FindNamed(Role::kOperand, text);
  if (!named) return ChkDigital(text, context);
  switch (named->entry) {
    case ENTRY_VALUE_OF_ACTION:
      return ChkValueName(text, context);
    case ENTRY_ARGNUMBER:
      return ChkArgName(text, context, index);
    default:
      return ChkGlobalName(text, context);
  }
}

std::uint32_t CGEVALUE::ChkValueName(std::string_view value, const CheckContext& context) {
  if (context.index->HasValue(context.section, value)) return 1;
  ReportEntry<MessageId::kUnknownValue>(*this, context, value);
  return 0;
}

}  // namespace ruxcomp::core
