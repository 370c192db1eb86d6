// The way out of a query: its last-error code and its result.
#ifndef QUERY_RESULT_H_
#define QUERY_RESULT_H_

#include "ruxcomp/data.h"
#include "ruxcomp/identifiers.h"

namespace ruxcomp::core {

// Functions also return it for a number that is not there.
using ruxcomp::language::kNoNumber;

// Stores the code and passes the result through: return Result(RUX_ERROR_OK, section);
template <class Value>
Value Result(RuxLastError code, Value value) {
  g_dwLastError = code;
  return value;
}

}  // namespace ruxcomp::core

#endif  // QUERY_RESULT_H_
