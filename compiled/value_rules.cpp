#include "compiled/value_rules.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/meta_records.h"
#include "ruxcomp/file/views.h"
#include "ruxcomp/language/compiled_entries.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/operators.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"

namespace rux::compiled {
namespace {

using language::ClassOf;
using language::Content;
using language::OrdinalOf;
using language::Role;

constexpr std::uint32_t kGroup = language::KindOf(language::SECTION_GROUP).compiled;
constexpr std::uint32_t kAction = language::KindOf(language::SECTION_ACTION).compiled;
constexpr std::uint32_t kArgumentNumber =
    language::FindEntryRow(language::ENTRY_ARGNUMBER)->compiled;

// How many values an entry of a type has, the type included.
ValueRules::Range CountsFor(std::uint32_t code, const Words& values) {
  const language::ValueType& type = language::TypeFor(
      code, values.size() > 1 ? OrdinalOf(values[1]) : language::kFirstComparison);
  return {type.least, type.MostKept()};
}

}  // namespace

void ValueRules::BeginSection(const MetaSectionView& section) {
  section_ = static_cast<std::uint32_t>(section.ordinal);
  identifier_ = section.identifier;
  has_argument_number_ = false;
  operands_are_any_ = false;
  parent_place_ = {};
  local_uses_.clear();
  local_values_.clear();
}

void ValueRules::CheckEntry(Cursor& cursor, const MetaEntryView& entry, Content content) {
  const Values values{cursor, entry};
  switch (content) {
    case Content::kTypedValue:
      return CheckTypedValue(values);
    case Content::kRepetition:
      return CheckRepetition(values);
    case Content::kNumbers:
      for (std::size_t i = 0; i < entry.values.size(); ++i) Check(values, i, language::CLASS_Dword);
      return;
    default:
      break;
  }
  if (!ExpectCount(values, {1, 1})) return;
  switch (content) {
    case Content::kNumber:
      return CheckNumber(values);
    case Content::kParent:
      return CheckParent(values);
    case Content::kGroupName:
      return Define(values, language::CLASS_Group);
    case Content::kActionName:
      return Define(values, language::CLASS_Action);
    default:
      return CheckText(values, content);
  }
}

// Where a section mentions a value, it has it.
void ValueRules::EndSection(Cursor& cursor) {
  std::sort(local_values_.begin(), local_values_.end());
  for (const auto& [identifier, place] : local_uses_) {
    if (std::binary_search(local_values_.begin(), local_values_.end(), identifier)) continue;
    const Record record(cursor, "entry", place.entry);
    cursor.Report("value", place.offset, "it is value {}, which the section does not have",
                  OrdinalOf(identifier));
  }
}

void ValueRules::ReportCount(Values values, Range right) {
  const std::string text = right.least == right.most ? fmt::format("{}", right.least)
                           : right.most == language::kAnyNumber
                               ? fmt::format("{} or more", right.least)
                               : fmt::format("{} to {}", right.least, right.most);
  values.cursor.Report("value count", values.entry.count_offset(), "it is {}, right is {}",
                       values.entry.values.size(), text);
}

bool ValueRules::Check(Values values, std::size_t i, std::uint32_t base) {
  return tables_.Check(values.cursor, "value", values.entry.value_offset(i), values[i], base);
}

void ValueRules::CheckText(Values values, Content content) {
  if (!Check(values, 0, language::CLASS_String)) return;
  const std::size_t offset = values.entry.value_offset(0);
  if (content != Content::kAnyText && tables_.TextOf(values[0]).empty()) {
    values.cursor.Report("value", offset, "the text is empty");
  }
  if (content == Content::kName && !references_.NameSection(identifier_, values[0])) {
    values.cursor.Report("value", offset, "a section of this kind before it has the name");
  }
}

void ValueRules::CheckNumber(Values values) {
  if (!Check(values, 0, language::CLASS_Dword)) return;
  if (values.entry.identifier != kArgumentNumber) return;
  has_argument_number_ = true;
  operands_are_any_ = tables_.NumberOf(values[0]) >= language::kMostOrdinals;
}

void ValueRules::CheckParent(Values values) {
  constexpr std::uint32_t kRoot = language::CLASS_Group;
  if (!Check(values, 0, language::CLASS_Group)) return;
  parent_ = values[0];
  parent_place_ = PlaceOf(values, 0);
  // Groups may stand at the root; a sensor is in a group.
  if (identifier_ != kGroup || parent_ != kRoot) references_.Use(parent_, parent_place_);
}

void ValueRules::Define(Values values, std::uint32_t base) {
  if (!Check(values, 0, base)) return;
  if (!references_.Define(values[0])) {
    values.cursor.Report("value", values.entry.value_offset(0),
                         "a section of this kind before it has the name");
  } else if (base == language::CLASS_Group && parent_place_.offset != 0) {
    references_.SetParent(values[0], parent_, parent_place_);
  }
}

void ValueRules::CheckTypedValue(Values values) {
  const Words& words = values.entry.values;
  if (!ExpectCount(values, {1, language::kAnyNumber})) return;
  if (ClassOf(words[0]) != language::CLASS_ValueType) {
    // The code of a type that no value has a record for may run over into the class.
    if (words.size() > 1) Check(values, 0, language::CLASS_ValueType);
    return;
  }
  const std::uint32_t code = OrdinalOf(words[0]);
  if (!ExpectCount(values, CountsFor(code, words))) return;
  const language::ValueType& type = language::FindValueType(code);
  const std::size_t last_argument =
      type.Has(language::kForwardsArguments) ? words.size() - 1 - type.TextCount() : 0;
  for (std::size_t i = 1; i < words.size(); ++i) {
    CheckPart(values, i, type.RoleOf(i - 1), last_argument);
  }
}

void ValueRules::CheckRepetition(Values values) {
  // A count that is no plain number leaves the entry without values.
  if (values.entry.values.empty() || !ExpectCount(values, {2, language::kAnyNumber})) return;
  Check(values, 0, language::CLASS_Dword);
  Use(values, 1, language::CLASS_Action);
}

void ValueRules::CheckPart(Values values, std::size_t i, Role role, std::size_t last_argument) {
  switch (role) {
    case Role::kOperand:
      return CheckOperand(values, i, last_argument);
    case Role::kNumber:
      Check(values, i, language::CLASS_Dword);
      return;
    case Role::kLocalValue:
      // A defined word may have such a name, too.
      if (ClassOf(values[i]) == language::CLASS_Dword && identifier_ == kAction) {
        Check(values, i, language::CLASS_Dword);
      } else {
        UseLocalValue(values, i);
      }
      return;
    case Role::kAction:
      return Use(values, i, language::CLASS_Action);
    case Role::kTable:
      return Use(values, i, language::CLASS_TableName);
    case Role::kOperator:
      if (ClassOf(values[i]) == language::CLASS_Operator &&
          language::FindOperator(OrdinalOf(values[i])) != nullptr) {
        return;
      }
      values.cursor.Report("value", values.entry.value_offset(i), "0x{:08X} is no operator",
                           values[i]);
      return;
    case Role::kNone:
    case Role::kRepeatCount:  // of repeaters
    case Role::kRepeatArgument:
      return;
  }
}

void ValueRules::CheckOperand(Values values, std::size_t i, std::size_t last_argument) {
  if (operands_are_any_) return;
  switch (ClassOf(values[i])) {
    case language::CLASS_Dword:
      Check(values, i, language::CLASS_Dword);
      return;
    case language::CLASS_Global:
      return Use(values, i, language::CLASS_Global);
    case language::CLASS_Value:
      return UseLocalValue(values, i);
    case language::CLASS_Small:
      if (has_argument_number_ || OrdinalOf(values[i]) <= last_argument) return;
      values.cursor.Report("value", values.entry.value_offset(i),
                           "it is argument {}, the last is {}", OrdinalOf(values[i]),
                           last_argument);
      return;
    default:
      return ReportNoOperand(values, i);
  }
}

void ValueRules::Use(Values values, std::size_t i, std::uint32_t base) {
  if (Check(values, i, base)) references_.Use(values[i], PlaceOf(values, i));
}

// Only actions have values for their other values to mention.
void ValueRules::UseLocalValue(Values values, std::size_t i) {
  if (identifier_ != kAction) return ReportNoOperand(values, i);
  if (Check(values, i, language::CLASS_Value))
    local_uses_.push_back({values[i], PlaceOf(values, i)});
}

void ValueRules::ReportNoOperand(Values values, std::size_t i) {
  values.cursor.Report("value", values.entry.value_offset(i), "0x{:08X} is no operand", values[i]);
}

WordPlace ValueRules::PlaceOf(Values values, std::size_t i) const {
  return {section_, static_cast<std::uint32_t>(values.entry.ordinal),
          static_cast<std::uint32_t>(values.entry.value_offset(i))};
}

}  // namespace rux::compiled
