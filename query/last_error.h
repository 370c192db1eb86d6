// Storing the last-error code of a query on the way out.
#ifndef QUERY_LAST_ERROR_H_
#define QUERY_LAST_ERROR_H_

#include "ruxcomp/data.h"
#include "ruxcomp/identifiers.h"

// Stores the code and passes the result through: return Result(RUX_ERROR_OK, section);
template <class Value>
Value Result(RuxLastError code, Value value) {
  g_dwLastError = code;
  return value;
}

#endif  // QUERY_LAST_ERROR_H_
