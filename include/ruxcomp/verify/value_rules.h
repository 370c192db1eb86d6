// What the values of the entries of a meta file must be.
#ifndef RUXCOMP_VERIFY_VALUE_RULES_H_
#define RUXCOMP_VERIFY_VALUE_RULES_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/file/meta_records.h"
#include "ruxcomp/file/views.h"
#include "ruxcomp/language/compiled_entries.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"
#include "ruxcomp/verify/local_values.h"
#include "ruxcomp/verify/meta_references.h"
#include "ruxcomp/verify/meta_tables.h"

namespace ruxcomp::verify {

// Judges one entry after the other. Where the compiler passes on what no check of the script looks
// at, anything goes: the arguments of a repeater, and operands of an action that has so many
// arguments that the number of one can run over into the class of its word.
class ValueRules {
 public:
  ValueRules(const MetaTables& tables, MetaReferences& references)
      : tables_(tables), references_(references), local_values_(tables) {}

  void BeginSection(const file::MetaSectionView& section) {
    section_ = static_cast<std::uint32_t>(section.ordinal);
    identifier_ = section.identifier;
    has_argument_number_ = false;
    operands_are_any_ = false;
    parent_place_ = {};
    local_values_.BeginSection(section_);
  }
  [[gnu::always_inline]] void CheckEntry(file::Cursor& cursor, const file::MetaEntryView& entry,
                                         language::Content content);
  // The section has an entry of that name, for its other values to mention.
  void AddLocalValue(std::uint32_t identifier) { local_values_.Add(identifier); }
  void EndSection(file::Cursor& cursor) { local_values_.EndSection(cursor); }

 private:
  static constexpr std::uint32_t kGroup = language::KindOf(language::SECTION_GROUP).compiled;
  static constexpr std::uint32_t kAction = language::KindOf(language::SECTION_ACTION).compiled;
  static constexpr std::uint32_t kArgumentNumber =
      language::FindEntryRow(language::ENTRY_ARGNUMBER)->compiled;

  // Words of one entry.
  struct Values {
    file::Cursor& cursor;
    const file::MetaEntryView& entry;

    [[gnu::always_inline]] std::uint32_t operator[](std::size_t i) const { return entry.value(i); }
    std::size_t size() const { return entry.value_count(); }
    std::size_t OffsetOf(std::size_t i) const { return entry.value_offset(i); }
  };

  // How many values an entry may have.
  struct Range {
    std::size_t least;
    std::size_t most;
  };

  static constexpr Range kSingle = {1, 1};

  static bool IsCountIn(Values values, Range right) {
    const std::size_t count = values.size();
    return count >= right.least && count <= right.most;
  }
  [[gnu::cold]] static void ReportCount(Values values, Range right);
  // Of an entry of a type, the type included.
  static Range CountsFor(const language::ValueType& type, Values values) {
    if (type.code != language::kComparison.code) return {type.least, type.MostKept()};
    const language::ValueType& own = language::TypeFor(
        type.code, values.size() > 1 ? language::OrdinalOf(values[1]) : language::kFirstComparison);
    return {own.least, own.MostKept()};
  }

  void Check(Values values, std::size_t i, std::uint32_t base) const {
    if (!tables_.Has(values[i], base)) Report(values, i, base);
  }
  [[gnu::cold]] void Report(Values values, std::size_t i, std::uint32_t base) const {
    tables_.Report(values.cursor, "value", values.OffsetOf(i), values[i], base);
  }
  void CheckOther(Values values, language::Content content);
  [[gnu::always_inline]] void CheckSingle(Values values, language::Content content);
  void CheckName(Values values);
  void CheckText(Values values, bool may_be_empty) const;
  void CheckNumber(Values values);
  void TakeArgumentNumber(std::uint32_t index);
  void CheckNumbers(Values values) const;
  void CheckParent(Values values);
  void Define(Values values, std::uint32_t base);
  void CheckTypedValue(Values values);
  [[gnu::always_inline]] void CheckParts(Values values, const language::ValueType& type);
  void CheckRepetition(Values values);
  [[gnu::always_inline]] void CheckPart(Values values, std::size_t i, language::Role role,
                                        std::size_t last_argument);
  void CheckOperand(Values values, std::size_t i, std::size_t last_argument);
  static void CheckOperator(Values values, std::size_t i);

  void Use(Values values, std::size_t i, std::uint32_t base) {
    if (!tables_.Has(values[i], base)) return Report(values, i, base);
    references_.Use(values[i], PlaceOf(values, i));
  }
  // Only actions have values for their other values to mention.
  void UseLocalValue(Values values, std::size_t i) {
    if (identifier_ != kAction) return ReportNoOperand(values, i);
    if (!tables_.Has(values[i], language::CLASS_Value)) {
      return Report(values, i, language::CLASS_Value);
    }
    local_values_.Mention(values[i], PlaceOf(values, i));
  }
  static void ReportNoOperand(Values values, std::size_t i) {
    values.cursor.Report("value", values.OffsetOf(i), "0x{:08X} is not an operand", values[i]);
  }
  WordPlace PlaceOf(Values values, std::size_t i) const {
    return {section_, static_cast<std::uint32_t>(values.entry.ordinal),
            static_cast<std::uint32_t>(values.OffsetOf(i))};
  }

  const MetaTables& tables_;
  MetaReferences& references_;

  // Of the section that one is in.
  std::uint32_t section_ = 0;  // its ordinal
  std::uint32_t identifier_ = 0;
  bool has_argument_number_ = false;
  bool operands_are_any_ = false;
  std::uint32_t parent_ = 0;  // of a GROUP or SENSOR: the group that it is in
  WordPlace parent_place_;
  LocalValues local_values_;
};

// Most entries are numbers. Whatever takes more than a few steps is called last, so that nothing
// has to be saved for what comes after it.
inline void ValueRules::CheckEntry(file::Cursor& cursor, const file::MetaEntryView& entry,
                                   language::Content content) {
  const Values values{cursor, entry};
  const bool is_number = content == language::Content::kNumber && IsCountIn(values, kSingle);
  return is_number ? CheckNumber(values) : CheckOther(values, content);
}

[[gnu::noinline]] inline void ValueRules::CheckOther(Values values, language::Content content) {
  switch (content) {
    case language::Content::kTypedValue:
      return CheckTypedValue(values);
    case language::Content::kRepetition:
      return CheckRepetition(values);
    case language::Content::kNumbers:
      return CheckNumbers(values);
    default:
      if (!IsCountIn(values, kSingle)) return ReportCount(values, kSingle);
      return CheckSingle(values, content);
  }
}

inline void ValueRules::ReportCount(Values values, Range right) {
  std::string text = std::to_string(right.least);
  if (right.most == language::kAnyNumber) {
    text += " or more";
  } else if (right.most != right.least) {
    text += " to " + std::to_string(right.most);
  }
  values.cursor.Report("value count", values.entry.count_offset(), "expected {1}, found {0}",
                       values.size(), text);
}

// The only value of its entry.
inline void ValueRules::CheckSingle(Values values, language::Content content) {
  switch (content) {
    case language::Content::kNumber:
      return CheckNumber(values);
    case language::Content::kParent:
      return CheckParent(values);
    case language::Content::kGroupName:
      return Define(values, language::CLASS_Group);
    case language::Content::kActionName:
      return Define(values, language::CLASS_Action);
    case language::Content::kName:
      return CheckName(values);
    default:
      return CheckText(values, content == language::Content::kAnyText);
  }
}

[[gnu::noinline]] inline void ValueRules::CheckText(Values values, bool may_be_empty) const {
  if (!tables_.Has(values[0], language::CLASS_String)) {
    return Report(values, 0, language::CLASS_String);
  }
  if (may_be_empty || !tables_.IsEmptyString(values[0])) return;
  values.cursor.Report("value", values.OffsetOf(0), "the text is empty");
}

[[gnu::noinline]] inline void ValueRules::CheckName(Values values) {
  CheckText(values, false);
  if (!tables_.Has(values[0], language::CLASS_String)) return;
  if (references_.NameSection(identifier_, values[0])) return;
  values.cursor.Report("value", values.OffsetOf(0),
                       "an earlier section of this kind has the same name");
}

inline void ValueRules::CheckNumber(Values values) {
  if (!tables_.Has(values[0], language::CLASS_Dword)) {
    return Report(values, 0, language::CLASS_Dword);
  }
  if (values.entry.identifier() == kArgumentNumber) TakeArgumentNumber(values[0]);
}

[[gnu::noinline]] inline void ValueRules::TakeArgumentNumber(std::uint32_t index) {
  has_argument_number_ = true;
  operands_are_any_ = tables_.NumberOf(index) >= language::kMostOrdinals;
}

[[gnu::noinline]] inline void ValueRules::CheckNumbers(Values values) const {
  const std::size_t count = values.size();
  for (std::size_t i = 0; i < count; ++i) Check(values, i, language::CLASS_Dword);
}

[[gnu::noinline]] inline void ValueRules::CheckParent(Values values) {
  constexpr std::uint32_t kRoot = language::CLASS_Group;
  if (!tables_.Has(values[0], language::CLASS_Group)) {
    return Report(values, 0, language::CLASS_Group);
  }
  parent_ = values[0];
  parent_place_ = PlaceOf(values, 0);
  // Groups may be at the root; a sensor is in a group.
  if (identifier_ != kGroup || parent_ != kRoot) references_.Use(parent_, parent_place_);
}

[[gnu::noinline]] inline void ValueRules::Define(Values values, std::uint32_t base) {
  if (!tables_.Has(values[0], base)) return Report(values, 0, base);
  if (!references_.Define(values[0])) {
    values.cursor.Report("value", values.OffsetOf(0),
                         "an earlier section of this kind has the same name");
  } else if (base == language::CLASS_Group && parent_place_.offset != 0) {
    references_.SetParent(values[0], parent_, parent_place_);
  }
}

[[gnu::noinline]] inline void ValueRules::CheckTypedValue(Values values) {
  constexpr Range kAnyCount = {1, language::kAnyNumber};
  if (!IsCountIn(values, kAnyCount)) return ReportCount(values, kAnyCount);
  if (language::ClassOf(values[0]) != language::CLASS_ValueType) {
    // The code of a type that no value has a record for may run over into the class.
    if (values.size() > 1) Check(values, 0, language::CLASS_ValueType);
    return;
  }
  const std::uint32_t code = language::OrdinalOf(values[0]);
  const language::ValueType& type = language::FindValueType(code);
  const Range right = CountsFor(type, values);
  if (!IsCountIn(values, right)) return ReportCount(values, right);
  CheckParts(values, type);
}

inline void ValueRules::CheckParts(Values values, const language::ValueType& type) {
  const std::size_t count = values.size();
  const std::size_t texts = type.TextCount();
  const language::Role role_in_list = type.RoleOf(texts);
  const std::size_t last_argument = type.Has(language::kForwardsArguments) ? count - 1 - texts : 0;
  for (std::size_t i = 1; i < count; ++i) {
    CheckPart(values, i, i <= texts ? type.roles[i - 1] : role_in_list, last_argument);
  }
}

[[gnu::noinline]] inline void ValueRules::CheckRepetition(Values values) {
  // A count that is not a plain number leaves the entry without values.
  if (values.size() == 0) return;
  constexpr Range kCallAtLeast = {2, language::kAnyNumber};
  if (!IsCountIn(values, kCallAtLeast)) return ReportCount(values, kCallAtLeast);
  Check(values, 0, language::CLASS_Dword);
  Use(values, 1, language::CLASS_Action);
}

inline void ValueRules::CheckPart(Values values, std::size_t i, language::Role role,
                                  std::size_t last_argument) {
  switch (role) {
    case language::Role::kOperand:
      return CheckOperand(values, i, last_argument);
    case language::Role::kNumber:
      return Check(values, i, language::CLASS_Dword);
    case language::Role::kLocalValue:
      // A defined word may have such a name, too.
      if (language::ClassOf(values[i]) == language::CLASS_Dword && identifier_ == kAction) {
        return Check(values, i, language::CLASS_Dword);
      }
      return UseLocalValue(values, i);
    case language::Role::kAction:
      return Use(values, i, language::CLASS_Action);
    case language::Role::kTable:
      return Use(values, i, language::CLASS_TableName);
    case language::Role::kOperator:
      return CheckOperator(values, i);
    case language::Role::kNone:
    case language::Role::kRepeatCount:  // of repeaters
    case language::Role::kRepeatArgument:
      return;
  }
}

inline void ValueRules::CheckOperand(Values values, std::size_t i, std::size_t last_argument) {
  if (operands_are_any_) return;
  switch (language::ClassOf(values[i])) {
    case language::CLASS_Dword:
      return Check(values, i, language::CLASS_Dword);
    case language::CLASS_Global:
      return Use(values, i, language::CLASS_Global);
    case language::CLASS_Value:
      return UseLocalValue(values, i);
    case language::CLASS_Small:
      if (has_argument_number_ || language::OrdinalOf(values[i]) <= last_argument) return;
      return values.cursor.Report("value", values.OffsetOf(i),
                                  "it is argument {}, but the last one is {}",
                                  language::OrdinalOf(values[i]), last_argument);
    default:
      return ReportNoOperand(values, i);
  }
}

inline void ValueRules::CheckOperator(Values values, std::size_t i) {
  if (language::ClassOf(values[i]) == language::CLASS_Operator &&
      language::FindOperator(language::OrdinalOf(values[i])) != nullptr) {
    return;
  }
  values.cursor.Report("value", values.OffsetOf(i), "0x{:08X} is not an operator", values[i]);
}

}  // namespace ruxcomp::verify

#endif  // RUXCOMP_VERIFY_VALUE_RULES_H_
