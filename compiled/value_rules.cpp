#include "compiled/value_rules.h"

#include <algorithm>

#include "compiled/index_class.h"
#include "compiled/limits.h"
#include "ruxcomp/identifiers.h"

namespace rux::compiled {
namespace {

constexpr std::size_t kAnyNumber = static_cast<std::size_t>(-1);

bool IsOperator(std::uint32_t code) {
#define OPERATOR(text, operator_code) \
  if (code == (operator_code)) return true;
#include "ruxcomp/language/operators.def"
  return false;
}

// How many values an entry of a type has, the type included.
ValueRules::Range CountsFor(std::uint32_t type, const Words& values) {
  const ValueShape& shape = ShapeOf(type);
  std::size_t parts = shape.texts.size();
  if (type == kCalculation && values.size() > 1 && !Compares(OrdinalOfIndex(values[1]))) {
    parts = kArithmeticParts;
  }
  if (shape.list.name == nullptr) return {1 + parts, 1 + parts};
  return {1 + parts + shape.least, shape.most == kAnyNumber ? kAnyNumber : 1 + parts + shape.most};
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
      for (std::size_t i = 0; i < entry.values.size(); ++i) Check(values, i, RUX_CLASS_Dword);
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
      return Define(values, RUX_CLASS_Group);
    case Content::kActionName:
      return Define(values, RUX_CLASS_Action);
    default:
      return CheckText(values, content);
  }
}

// Where a section mentions a value, it has it.
void ValueRules::EndSection(Cursor& cursor) {
  for (const auto& [identifier, place] : local_uses_) {
    if (std::find(local_values_.begin(), local_values_.end(), identifier) != local_values_.end()) {
      continue;
    }
    const Record record(cursor, "entry", place.entry);
    cursor.Report("value", place.offset, "it is value {}, which the section does not have",
                  OrdinalOfIndex(identifier));
  }
}

void ValueRules::ReportCount(Values values, Range right) {
  const std::string text = right.least == right.most ? fmt::format("{}", right.least)
                           : right.most == kAnyNumber
                               ? fmt::format("{} or more", right.least)
                               : fmt::format("{} to {}", right.least, right.most);
  values.cursor.Report("value count", values.entry.count_offset(), "it is {}, right is {}",
                       values.entry.values.size(), text);
}

bool ValueRules::Check(Values values, std::size_t i, std::uint32_t base) {
  return tables_.Check(values.cursor, "value", values.entry.value_offset(i), values[i], base);
}

void ValueRules::CheckText(Values values, Content content) {
  if (!Check(values, 0, RUX_CLASS_String)) return;
  const std::size_t offset = values.entry.value_offset(0);
  if (content != Content::kAnyText && tables_.TextOf(values[0]).empty()) {
    values.cursor.Report("value", offset, "the text is empty");
  }
  if (content == Content::kName && !references_.NameSection(identifier_, values[0])) {
    values.cursor.Report("value", offset, "a section of this kind before it has the name");
  }
}

void ValueRules::CheckNumber(Values values) {
  if (!Check(values, 0, RUX_CLASS_Dword)) return;
  if (values.entry.identifier != RUX_ENTRY_ARGNUMBER) return;
  has_argument_number_ = true;
  operands_are_any_ = tables_.NumberOf(values[0]) >= kMostTableItems;
}

void ValueRules::CheckParent(Values values) {
  constexpr std::uint32_t kRoot = RUX_CLASS_Group;
  if (!Check(values, 0, RUX_CLASS_Group)) return;
  parent_ = values[0];
  parent_place_ = PlaceOf(values, 0);
  // Groups may stand at the root; a sensor is in a group.
  if (identifier_ != RUX_SECT_GROUP || parent_ != kRoot) references_.Use(parent_, parent_place_);
}

void ValueRules::Define(Values values, std::uint32_t base) {
  if (!Check(values, 0, base)) return;
  if (!references_.Define(values[0])) {
    values.cursor.Report("value", values.entry.value_offset(0),
                         "a section of this kind before it has the name");
  } else if (base == RUX_CLASS_Group && parent_place_.offset != 0) {
    references_.SetParent(values[0], parent_, parent_place_);
  }
}

void ValueRules::CheckTypedValue(Values values) {
  const Words& words = values.entry.values;
  if (!ExpectCount(values, {1, kAnyNumber})) return;
  if (ClassOfIndex(words[0]) != RUX_CLASS_ValueType) {
    // The code of a type that no value has a record for may run over into the class.
    if (words.size() > 1) Check(values, 0, RUX_CLASS_ValueType);
    return;
  }
  const std::uint32_t type = OrdinalOfIndex(words[0]);
  if (!ExpectCount(values, CountsFor(type, words))) return;
  const ValueShape& shape = ShapeOf(type);
  const std::size_t first_of_list = 1 + shape.texts.size();
  const std::size_t last_argument = type == kCall ? words.size() - first_of_list : 0;
  for (std::size_t i = 1; i < words.size(); ++i) {
    const Role role = i < first_of_list ? shape.texts[i - 1].role : shape.list.role;
    CheckPart(values, i, role, last_argument);
  }
}

void ValueRules::CheckRepetition(Values values) {
  // A count that is no plain number leaves the entry without values.
  if (values.entry.values.empty() || !ExpectCount(values, {2, kAnyNumber})) return;
  Check(values, 0, RUX_CLASS_Dword);
  Use(values, 1, RUX_CLASS_Action);
}

void ValueRules::CheckPart(Values values, std::size_t i, Role role, std::size_t last_argument) {
  switch (role) {
    case Role::kOperand:
      return CheckOperand(values, i, last_argument);
    case Role::kNumber:
      Check(values, i, RUX_CLASS_Dword);
      return;
    case Role::kLocalValue:
      // A defined word may have such a name, too.
      if (ClassOfIndex(values[i]) == RUX_CLASS_Dword && identifier_ == RUX_SECT_ACTION) {
        Check(values, i, RUX_CLASS_Dword);
      } else {
        UseLocalValue(values, i);
      }
      return;
    case Role::kAction:
      return Use(values, i, RUX_CLASS_Action);
    case Role::kTable:
      return Use(values, i, RUX_CLASS_TableName);
    case Role::kOperator:
      if (ClassOfIndex(values[i]) == RUX_CLASS_Operator && IsOperator(OrdinalOfIndex(values[i]))) {
        return;
      }
      values.cursor.Report("value", values.entry.value_offset(i), "0x{:08X} is no operator",
                           values[i]);
      return;
  }
}

void ValueRules::CheckOperand(Values values, std::size_t i, std::size_t last_argument) {
  if (operands_are_any_) return;
  switch (ClassOfIndex(values[i])) {
    case RUX_CLASS_Dword:
      Check(values, i, RUX_CLASS_Dword);
      return;
    case RUX_CLASS_Global:
      return Use(values, i, RUX_CLASS_Global);
    case RUX_CLASS_Value:
      return UseLocalValue(values, i);
    case RUX_CLASS_Small:
      if (has_argument_number_ || OrdinalOfIndex(values[i]) <= last_argument) return;
      values.cursor.Report("value", values.entry.value_offset(i),
                           "it is argument {}, the last is {}", OrdinalOfIndex(values[i]),
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
  if (identifier_ != RUX_SECT_ACTION) return ReportNoOperand(values, i);
  if (Check(values, i, RUX_CLASS_Value)) local_uses_.push_back({values[i], PlaceOf(values, i)});
}

void ValueRules::ReportNoOperand(Values values, std::size_t i) {
  values.cursor.Report("value", values.entry.value_offset(i), "0x{:08X} is no operand", values[i]);
}

WordPlace ValueRules::PlaceOf(Values values, std::size_t i) const {
  return {section_, static_cast<std::uint32_t>(values.entry.ordinal),
          static_cast<std::uint32_t>(values.entry.value_offset(i))};
}

}  // namespace rux::compiled
