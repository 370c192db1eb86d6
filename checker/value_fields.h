// The fields of a parsed value with their roles.
#ifndef CHECKER_VALUE_FIELDS_H_
#define CHECKER_VALUE_FIELDS_H_

#include <array>
#include <cstddef>
#include <string_view>

#include "frontend/identifiers.h"
#include "frontend/text.h"
#include "frontend/value_records.h"
#include "ruxcomp/language/values.h"

namespace ruxcomp::core {

// One field: a text or a list of texts, each of the field's role.
struct ValueField {
  Role role;
  bool is_list;
  std::string_view text;
  TextList list;
};

// The fields that a value uses, in record order: all of its record, except that a calculation that
// does not compare uses only the first two operands.
class ValueFields {
 public:
  explicit ValueFields(const CGeValue& value);

  const ValueField* begin() const { return fields_.data(); }
  const ValueField* end() const { return fields_.data() + count_; }
  const ValueField& back() const { return end()[-1]; }
  bool HasList() const { return count_ != 0 && back().is_list; }

 private:
  std::array<ValueField, kMaxFields> fields_;
  std::size_t count_ = 0;
};

}  // namespace ruxcomp::core

#endif  // CHECKER_VALUE_FIELDS_H_
