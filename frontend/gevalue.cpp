#include "frontend/gevalue.h"

#include "frontend/value_types.h"

void CGeValue::Create(std::uint32_t type, const std::string& text) {
  type_ = type;
  strType_ = text;
  record_ = FindValueType(type).make();
}

void CGeValue::Destory() { *this = CGeValue(); }
