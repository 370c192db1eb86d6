#include "checker/value_fields.h"

#include <string>
#include <variant>
#include <vector>

#include "frontend/value_records.h"
#include "ruxcomp/language/values.h"

namespace ruxcomp::core {

namespace {

struct Collector {
  const ValueType& type;
  std::vector<ValueField>& fields;

  Role NextRole() const { return type.roles[fields.size()]; }
  void operator()(const std::string& text) { fields.push_back({NextRole(), &text, nullptr}); }
  void operator()(const TextList& list) { fields.push_back({NextRole(), nullptr, &list}); }
};

}  // namespace

std::vector<ValueField> FieldsOf(const CGeValue& value) {
  std::vector<ValueField> fields;
  fields.reserve(kMaxFields);
  VisitValueFields(value.record(), Collector{FindValueType(value.GetType()), fields});
  if (const auto* calculation = std::get_if<CalculationRecord>(&value.record())) {
    // The type's own sub-string is not a field.
    fields.resize(TypeFor(value.GetType(), calculation->Operator).most - 1);
  }
  return fields;
}

}  // namespace ruxcomp::core
