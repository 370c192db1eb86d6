// The types of values: what a value of each type code is made of, and the operators of
// calculations.
#ifndef RUXCOMP_LANGUAGE_VALUES_H_
#define RUXCOMP_LANGUAGE_VALUES_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "ruxcomp/language/rows.h"

namespace ruxcomp::language {

struct Operator {
  std::string_view text;
  std::uint32_t code;
};

inline constexpr Operator kOperators[] = {
#define OPERATOR(text, code) {text, code},
#include "ruxcomp/language/operators.def"
};

inline constexpr std::uint32_t kFirstComparison = 101;
constexpr bool IsComparison(std::uint32_t code) { return code >= kFirstComparison; }

// The operator of that text, or of that code; null when there is none.
constexpr const Operator* FindOperator(std::string_view text) {
  return FindRow(kOperators, [&](const Operator& row) { return row.text == text; });
}
constexpr const Operator* FindOperator(std::uint32_t code) {
  return FindRow(kOperators, [&](const Operator& row) { return row.code == code; });
}

// The code of an operator; 0 for any other text.
constexpr std::uint32_t OperatorCode(std::string_view text) {
  const Operator* row = FindOperator(text);
  return row != nullptr ? row->code : 0;
}

// What a field stands for: how it is checked and what it compiles to.
enum class Role : std::uint8_t {
  kNone,            // no such field
  kOperand,         // a number, a defined word, or the name of a value, an argument or a global
  kNumber,          // a number or a defined word
  kLocalValue,      // the name of a value of the same section
  kAction,          // the name of an ACTION section
  kTable,           // the name of a TABLE section
  kOperator,        // an operator of operators.def
  kRepeatCount,     // of a repeater: a number, a defined word or a global
  kRepeatArgument,  // of a repeater: the same, or an argument
};

enum class FieldKind : std::uint8_t { kText, kList };

enum class Shape : std::uint8_t {
  kNone,  // a value without a record: nothing of it but the type is kept
#define SHAPE(shape) k##shape,
#include "ruxcomp/language/value_types.def"
};

struct Field {
  Shape shape;
  const char* name;
  const char* part;  // what selectors call it
  FieldKind kind;
  Role role;
};

inline constexpr Field kFields[] = {
#define FIELD(shape, name, kind, role) {Shape::k##shape, #name, #name, FieldKind::kind, Role::role},
#define PART_FIELD(shape, name, part, kind, role) \
  {Shape::k##shape, #name, #part, FieldKind::kind, Role::role},
#include "ruxcomp/language/value_types.def"
};
static_assert(AreNeighbours(kFields, [](const Field& field) { return field.shape; }));

// The fields of a record, in order.
constexpr Rows<Field> FieldsOfShape(Shape shape) {
  return RowsThat(kFields, [&](const Field& field) { return field.shape == shape; });
}

// How many fields the largest record has.
inline constexpr std::size_t kMaxFields = [] {
  std::size_t most = 0;
  for (const Field& field : kFields) {
    const std::size_t count = FieldsOfShape(field.shape).size();
    most = count > most ? count : most;
  }
  return most;
}();
inline constexpr std::uint32_t kAnyNumber = 0xFFFFFFFF;

enum ValueTypeFlag : std::uint32_t {
  kPlainType = 0,
  kKeepsSurplus = 1,     // a list also takes the parts beyond the most
  kSelectsSurplus = 2,   // selectors also fit values with parts beyond the most
  kCountsArguments = 4,  // the list must be as long as the action's argument number
  kForwardsArguments =
      8,            // outside of an action, ARGn may go up to the arguments that it passes on
  kOnlySmbus = 16,  // the bus fields must be those of an SMBUS access
};

struct ValueType {
  std::uint32_t code;
  Shape shape;
  std::uint32_t least;                 // parts needed, the type's own included
  std::uint32_t most;                  // parts beyond these get a warning
  std::uint32_t flags;                 // of ValueTypeFlag
  Rows<Field> fields;                  // of the record
  std::array<Role, kMaxFields> roles;  // of the fields, in order

  constexpr bool Has(ValueTypeFlag flag) const { return (flags & flag) != 0; }

  // The fields are texts, then at most one list.
  constexpr bool HasList() const {
    return !fields.empty() && fields[fields.size() - 1].kind == FieldKind::kList;
  }
  constexpr std::size_t TextCount() const { return fields.size() - (HasList() ? 1 : 0); }
  // The role of a part, by its number without the type: what follows the texts is in the list.
  constexpr Role RoleOf(std::size_t part) const {
    if (part < TextCount()) return roles[part];
    return HasList() ? roles[TextCount()] : Role::kNone;
  }

  // How many parts the checks leave in such a value, the type's own included.
  constexpr std::uint32_t MostKept() const {
    if (shape == Shape::kNone) return 1;
    return Has(kKeepsSurplus) ? kAnyNumber : most;
  }
};

struct RoleException {
  std::uint32_t code;
  Shape shape;
  std::string_view field;
  Role role;
};
inline constexpr RoleException kRoleExceptions[] = {
#define ROLE_IN(code, shape, name, role) {code, Shape::k##shape, #name, Role::role},
#include "ruxcomp/language/value_types.def"
};

constexpr bool ExceptionsNameFields() {
  for (const RoleException& row : kRoleExceptions) {
    const auto is_field = [&](const Field& field) {
      return field.shape == row.shape && row.field == field.name;
    };
    if (!HasRow(kFields, is_field)) return false;
  }
  return true;
}
static_assert(ExceptionsNameFields(), "the fields of ROLE_IN rows exist");

constexpr Role RoleIn(std::uint32_t code, const Field& field) {
  for (const RoleException& row : kRoleExceptions) {
    if (row.code == code && row.shape == field.shape && row.field == field.name) return row.role;
  }
  return field.role;
}

constexpr ValueType MakeValueType(std::uint32_t code, Shape shape, std::uint32_t least,
                                  std::uint32_t most, std::uint32_t flags) {
  ValueType type{code, shape, least, most, flags, FieldsOfShape(shape), {}};
  for (std::size_t i = 0; i < type.fields.size(); ++i) type.roles[i] = RoleIn(code, type.fields[i]);
  return type;
}

inline constexpr ValueType kValueTypes[] = {
#define VALUE_TYPE(code, shape, least, most, flags) \
  MakeValueType(code, Shape::k##shape, least, most, flags),
#include "ruxcomp/language/value_types.def"
};
static_assert(AreDistinct(kValueTypes, [](const ValueType& type) { return type.code; }));

// A calculation whose operator compares. FindValueType returns the other one.
inline constexpr ValueType kComparison =
#define COMPARISON_TYPE(code, shape, least, most, flags) \
  MakeValueType(code, Shape::k##shape, least, most, flags);
#include "ruxcomp/language/value_types.def"

    // Of every other code.
    inline constexpr ValueType kNoRecord =
        MakeValueType(kAnyNumber, Shape::kNone, 1, kAnyNumber, kPlainType);

// The parts of a REPEATER entry, which has no type.
inline constexpr ValueType kRepeaterRecord =
    MakeValueType(kAnyNumber, Shape::kRepeater, 2, kAnyNumber, kPlainType);

constexpr bool ListsComeLast() {
  for (std::size_t i = 0; i + 1 < std::size(kFields); ++i) {
    const bool is_last = kFields[i + 1].shape != kFields[i].shape;
    if (kFields[i].kind == FieldKind::kList && !is_last) return false;
  }
  return true;
}
static_assert(ListsComeLast(), "a list is the last field of its shape");

// The type with that code. Codes without a row are legal: such a value has no record and nothing of
// it is checked. Their type is kNoRecord.
constexpr const ValueType& FindValueType(std::uint32_t code) {
  // The first codes are those of the first rows.
  if (code < std::size(kValueTypes) && kValueTypes[code].code == code) return kValueTypes[code];
  const auto has_code = [&](const ValueType& type) { return type.code == code; };
  const std::size_t place = PlaceOfRow(kValueTypes, has_code);
  return place < std::size(kValueTypes) ? kValueTypes[place] : kNoRecord;
}

// The type of a value with that code and, for a calculation, that operator: with two operands, or
// four when it compares.
constexpr const ValueType& TypeFor(std::uint32_t code, std::uint32_t operator_code) {
  const bool compares = code == kComparison.code && IsComparison(operator_code);
  return compares ? kComparison : FindValueType(code);
}
constexpr const ValueType& TypeFor(std::uint32_t code, std::string_view operator_text) {
  if (code != kComparison.code) return FindValueType(code);
  return TypeFor(code, OperatorCode(operator_text));
}

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_VALUES_H_
