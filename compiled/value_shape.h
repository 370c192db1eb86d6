// What values are made of in both forms of compiled files.
#ifndef COMPILED_VALUE_SHAPE_H_
#define COMPILED_VALUE_SHAPE_H_

#include <cstddef>
#include <cstdint>
#include <vector>

namespace rux::compiled {

// What a part of a value refers to.
enum class Role {
  kOperand,  // a number, a global, an argument or a value of the same section
  kNumber,
  kLocalValue,  // a value of the same section
  kAction,
  kTable,
  kOperator,
};

struct ShapePart {
  const char* name;
  Role role;
};

// Texts, and a list behind them, in a debug meta file; a word for each in a meta file.
struct ValueShape {
  std::vector<ShapePart> texts;
  ShapePart list = {nullptr, Role::kOperand};  // no name: there is none
  std::size_t least = 0;                       // elements of the list
  std::size_t most = static_cast<std::size_t>(-1);
};

// The shape of a type code; that of a type without a record is empty.
const ValueShape& ShapeOf(std::uint32_t value_type);

// The call of an action: the one value that may hand on arguments of its own.
inline constexpr std::uint32_t kCall = 3;

// A calculation has two operands more when its operator compares; a debug meta file has empty texts
// for them otherwise.
inline constexpr std::uint32_t kCalculation = 2;
inline constexpr std::size_t kArithmeticParts = 3;
constexpr bool Compares(std::uint32_t operator_code) { return operator_code > 100; }

}  // namespace rux::compiled

#endif  // COMPILED_VALUE_SHAPE_H_
