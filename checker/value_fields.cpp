#include "checker/value_fields.h"

#include "checker/number.h"

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
  constexpr std::size_t kOperatorAndTwoOperands = 3;
  std::vector<ValueField> fields;
  fields.reserve(kMaxFields);
  VisitValueFields(value.record(), Collector{FindValueType(value.GetType()), fields});
  if (value.GetType() == kCalculation && GetOperator(*fields.front().text) < kFirstComparison) {
    fields.resize(kOperatorAndTwoOperands);
  }
  return fields;
}
