#include "compiled/value_shape.h"

namespace rux::compiled {
namespace {

constexpr Role O = Role::kOperand;
constexpr Role N = Role::kNumber;

// By type code.
std::vector<ValueShape> Shapes() {
  const ShapePart args = {"Args", O};
  const ValueShape text = {{{"Text", O}}};
  const ValueShape bus = {{{"Operand", O}, {"Number", N}, {"BusType", N}, {"BaseAddress", O}}};
  const ValueShape bus_args = {bus.texts, args, 1};
  std::vector<ValueShape> shapes(105);
  shapes[1] = text;
  shapes[kCalculation] = {{{"Operator", Role::kOperator},
                           {"Operand1", O},
                           {"Operand2", O},
                           {"Operand3", O},
                           {"Operand4", O}}};
  shapes[kCall] = {{{"Name", Role::kAction}}, args};
  shapes[4] = bus;
  shapes[5] = bus_args;
  shapes[6] = {{{"First", N}, {"Second", N}}, args};
  shapes[7] = {{}, args, 0, 4};
  shapes[8] = bus;
  shapes[9] = bus_args;
  shapes[10] = {{{"Table", Role::kTable}, {"Index", O}}};
  shapes[11] = bus_args;
  shapes[12] = bus;
  shapes[101] = text;
  shapes[102] = {{{"First", O}, {"Second", Role::kAction}}, args};
  shapes[103] = text;
  shapes[104] = {{{"Text", Role::kLocalValue}}};
  return shapes;
}

}  // namespace

const ValueShape& ShapeOf(std::uint32_t value_type) {
  static const std::vector<ValueShape> shapes = Shapes();
  return shapes[value_type < shapes.size() ? value_type : 0];
}

}  // namespace rux::compiled
