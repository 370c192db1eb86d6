// The value types: what a value of each type code is made of.
#ifndef FRONTEND_VALUE_TYPES_H_
#define FRONTEND_VALUE_TYPES_H_

#include <array>
#include <cstddef>
#include <cstdint>

#include "frontend/value_records.h"

// What a field of a value record stands for: how it is checked and what it compiles to.
enum class Role : std::uint8_t {
  kNone,        // no such field
  kOperand,     // a number, a defined word, or the name of a value, an argument or a global
  kNumber,      // a number or a defined word
  kLocalValue,  // the name of a value of the same section
  kAction,      // the name of an ACTION section
  kTable,       // the name of a TABLE section
  kOperator,    // an operator of operators.def
};

inline constexpr std::size_t kMaxFields = 5;
inline constexpr std::uint32_t kAnyNumber = 0xFFFFFFFF;

struct ValueType {
  std::uint32_t code;
  ValueRecord (*make)();               // an empty record of the type's shape
  std::uint32_t least;                 // sub-strings needed, the type's own included
  std::uint32_t most;                  // more than these are warned of
  std::array<Role, kMaxFields> roles;  // of the record's fields, in record order; for a list field,
                                       // of each of its elements
  bool keepsSurplus = false;           // a list field takes also what is warned of
  bool countsArguments = false;        // the action's argument number must match the list
  bool onlySmbus = false;              // the bus fields must be those of an SMBUS access
};

// The type with that code. Codes that no row has (13 to 100, above 104) are legal: such a value has
// no record and nothing of it is checked; the result then has no roles and makes no record.
const ValueType& FindValueType(std::uint32_t code);

// A calculation has two operands, or four when its operator compares: the one code whose
// sub-strings the operator counts. FindValueType answers with the former; this is the latter.
inline constexpr std::uint32_t kCalculation = 2;
extern const ValueType kComparison;

// The call of an action with arguments.
inline constexpr std::uint32_t kActionCall = 3;

#endif  // FRONTEND_VALUE_TYPES_H_
