// The value of an entry as a script would write it.
#ifndef QUERY_VALUE_TEXT_H_
#define QUERY_VALUE_TEXT_H_

#include <string>

#include "frontend/entry_data.h"

// Parts joined with commas. A number in hexadecimal; nothing for a value without a record and for
// an empty payload.
std::string ValueText(const CRuxEntryData& data);

#endif  // QUERY_VALUE_TEXT_H_
