#include <cstdint>
#include <string_view>

#include "frontend/identifiers.h"  // IWYU pragma: keep
#include "frontend/value_records.h"
#include "ruxcomp/language/values.h"

namespace ruxcomp::core {

ValueRecord MakeValueRecord(Shape shape) {
  switch (shape) {
#define SHAPE(shape)    \
  case Shape::k##shape: \
    return shape##Record{};
#define ENTRY_SHAPE(shape) case Shape::k##shape:
#include "ruxcomp/language/value_types.def"
    case Shape::kNone:
      break;
  }
  return {};
}

void CGeValue::Create(std::uint32_t type, std::string_view text) {
  type_ = type;
  str_type_ = text;
  record_ = MakeValueRecord(FindValueType(type).shape);
}

void CGeValue::Destory() { *this = CGeValue(); }

}  // namespace ruxcomp::core
