// The fields of a parsed value together with what they stand for.
#ifndef CHECKER_VALUE_FIELDS_H_
#define CHECKER_VALUE_FIELDS_H_

#include <string>
#include <vector>

#include "frontend/identifiers.h"
#include "frontend/value_records.h"

namespace ruxcomp::core {

// One field: either a text or a list of texts, each of the field's role.
struct ValueField {
  Role role;
  const std::string* text;  // null for a list
  const TextList* list;     // null for a text
};

// The fields that the value uses, in record order: all of its record, but of a calculation that
// does not compare only the first two operands. The pointers are valid while the value lives
// unchanged.
std::vector<ValueField> FieldsOf(const CGeValue& value);

}  // namespace ruxcomp::core

#endif  // CHECKER_VALUE_FIELDS_H_
