#include "inspect/debug_value.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "compiled/datum.h"
#include "compiled/debug_meta.h"
#include "inspect/debug_find.h"
#include "inspect/entry_value.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"

namespace rux::inspect {
namespace {

namespace language = ruxcomp::language;
using compiled::Datum;

Datum TextOfClass(std::uint32_t index_class, const std::string& text) {
  return {language::FindClass(index_class), 0, text};
}

// A number or a defined word; none for any other text.
std::optional<Datum> WrittenNumber(const compiled::DebugMeta& meta, const std::string& text) {
  const std::optional<std::uint32_t> number = NumberOf(meta, text);
  if (!number) return std::nullopt;
  Datum datum = compiled::NumberDatum(*number);
  datum.written = text;
  return datum;
}

Datum NumberOrNothing(const compiled::DebugMeta& meta, const std::string& text) {
  return WrittenNumber(meta, text).value_or(Datum());
}

// A number, a defined word, or the name of a value, a global or an argument.
Datum OperandOf(const compiled::DebugMeta& meta, const std::string& text) {
  if (std::optional<Datum> number = WrittenNumber(meta, text)) return *number;
  for (const std::uint32_t index_class :
       {language::CLASS_Value, language::CLASS_Global, language::CLASS_Small}) {
    const language::ClassRow* row = language::FindClass(index_class);
    if (language::BeginsWith(text, row->prefix)) {
      return {row, language::ReadNumber(text.substr(row->prefix.size())).value, text};
    }
  }
  if (text == language::kPlainValue) return TextOfClass(language::CLASS_Value, text);
  return {};
}

Datum FieldOf(const compiled::DebugMeta& meta, language::Role role, const std::string& text) {
  switch (role) {
    case language::Role::kAction:
      return TextOfClass(language::CLASS_Action, text);
    case language::Role::kTable:
      return TextOfClass(language::CLASS_TableName, text);
    case language::Role::kOperator:
      return TextOfClass(language::CLASS_Operator, text);
    default:
      return OperandOf(meta, text);
  }
}

// Appends the texts of a field to the part that selectors find them in.
void Append(const compiled::DebugMeta& meta, const language::Field& row, language::Role role,
            const compiled::DebugField& field, EntryValue& value) {
  const bool goes_on = !value.parts.empty() && value.parts.back().name == row.part;
  if (!goes_on) value.parts.push_back({row.part, field.is_list, {}});
  EntryPart& part = value.parts.back();
  part.is_list |= goes_on;
  for (const std::string& text : field.texts) {
    // A calculation has more fields than its operator may need.
    if (!field.is_list && text.empty()) continue;
    part.items.push_back(FieldOf(meta, role, text));
  }
  if (part.items.empty() && !part.is_list) value.parts.pop_back();
}

EntryValue TypedValue(const compiled::DebugMeta& meta, const compiled::DebugEntry& entry) {
  EntryValue value{entry.value_type, {}, entry.fields.front().texts.front()};
  const language::ValueType& type = language::FindValueType(entry.value_type);
  for (std::size_t i = 0; i < type.fields.size() && i + 1 < entry.fields.size(); ++i) {
    Append(meta, type.fields[i], type.roles[i], entry.fields[i + 1], value);
    if (!value.parts.empty())
      value.parts.back().is_address = IsAddress(entry.value_type, value.parts.back().name);
  }
  return value;
}

EntryValue RepeaterValue(const compiled::DebugMeta& meta, const compiled::DebugEntry& entry) {
  EntryValue value;
  const auto rows = language::FieldsOfShape(language::Shape::kRepeater);
  for (std::size_t i = 0; i < std::min(rows.size(), entry.fields.size()); ++i) {
    Append(meta, rows[i], rows[i].role, entry.fields[i], value);
  }
  return value;
}

// The texts of an entry without parts.
Datum PlainDatum(const compiled::DebugMeta& meta, const compiled::DebugSection& section,
                 const compiled::DebugEntry& entry, const std::string& text) {
  if (language::IsNumericString(entry.identifier) || language::IsNumericList(entry.identifier) ||
      entry.identifier == language::ENTRY_TABLE_ROW) {
    return NumberOrNothing(meta, text);
  }
  switch (language::TextUseOf(section.identifier, entry.identifier)) {
    case language::TextUse::kGroupName:
      return TextOfClass(language::CLASS_Group, text);
    case language::TextUse::kActionName:
      return TextOfClass(language::CLASS_Action, text);
    default:
      return TextOfClass(language::CLASS_String, text);
  }
}

}  // namespace

EntryValue ValueOf(const compiled::DebugMeta& meta, const compiled::DebugSection& section,
                   const compiled::DebugEntry& entry) {
  const std::uint32_t payload = language::PayloadOf(entry.payload_type);
  if (payload == language::PAYLOAD_VALUE) return TypedValue(meta, entry);
  if (payload == language::PAYLOAD_REPEATER) return RepeaterValue(meta, entry);
  EntryPart part{"", payload == language::PAYLOAD_STRINGLIST, {}};
  if (payload == language::PAYLOAD_DWORD) {
    part.items.push_back(compiled::NumberDatum(entry.number));
  } else {
    for (const std::string& text : entry.fields.front().texts) {
      part.items.push_back(PlainDatum(meta, section, entry, text));
    }
  }
  return {std::nullopt, {std::move(part)}};
}

}  // namespace rux::inspect
