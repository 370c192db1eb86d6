#include "tool/compiled/value_shape.h"

#include <map>

namespace rux {

const ValueShape& ShapeOf(std::uint32_t value_type) {
  static const ValueShape none;
  static const ValueShape text{{"Text"}};
  static const ValueShape calculation{{"Operator", "Operand1", "Operand2", "Operand3", "Operand4"}};
  static const ValueShape call{{"Name"}, "Args"};
  static const ValueShape bus{{"Operand", "Number", "BusType", "BaseAddress"}};
  static const ValueShape bus_args{{"Operand", "Number", "BusType", "BaseAddress"}, "Args"};
  static const ValueShape pair{{"First", "Second"}, "Args"};
  static const ValueShape list{{}, "Args"};
  static const ValueShape cell{{"Table", "Index"}};
  static const std::map<std::uint32_t, const ValueShape*> shapes = {
      {1, &text},   {2, &calculation}, {3, &call},     {4, &bus},   {5, &bus_args},  {6, &pair},
      {7, &list},   {8, &bus},         {9, &bus_args}, {10, &cell}, {11, &bus_args}, {12, &bus},
      {101, &text}, {102, &pair},      {103, &text},   {104, &text}};
  const auto found = shapes.find(value_type);
  return found == shapes.end() ? none : *found->second;
}

}  // namespace rux
