// What the record of a value of a debug meta file is made of.
#ifndef TOOL_COMPILED_VALUE_SHAPE_H_
#define TOOL_COMPILED_VALUE_SHAPE_H_

#include <cstdint>
#include <vector>

namespace rux {

struct ValueShape {
  std::vector<const char*> texts;  // the names of its texts, in order
  const char* list = nullptr;      // the name of the list behind them; null: none
};

// The shape of a type code; that of a type without a record is empty.
const ValueShape& ShapeOf(std::uint32_t value_type);

}  // namespace rux

#endif  // TOOL_COMPILED_VALUE_SHAPE_H_
