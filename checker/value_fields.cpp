#include "checker/value_fields.h"

#include <cstddef>
#include <string_view>
#include <variant>

#include "frontend/text.h"
#include "frontend/value_records.h"
#include "ruxcomp/language/values.h"

namespace ruxcomp::core {

namespace {

struct Collector {
  const ValueType& type;
  ValueField* fields;
  std::size_t& count;

  Role NextRole() const { return type.roles[count]; }
  void operator()(std::string_view text) {
    fields[count] = {NextRole(), false, text, {}};
    ++count;
  }
  void operator()(const TextList& list) {
    fields[count] = {NextRole(), true, {}, list};
    ++count;
  }
};

}  // namespace

ValueFields::ValueFields(const CGeValue& value) {
  VisitValueFields(value.record(),
                   Collector{FindValueType(value.GetType()), fields_.data(), count_});
  if (const auto* calculation = std::get_if<CalculationRecord>(&value.record())) {
    // The type's own part is not a field.
    count_ = TypeFor(value.GetType(), calculation->Operator).most - 1;
  }
}

}  // namespace ruxcomp::core
