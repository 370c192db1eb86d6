// The value of an entry as a script would write it.
#ifndef QUERY_VALUE_TEXT_H_
#define QUERY_VALUE_TEXT_H_

#include <cstddef>

#include "frontend/entry_data.h"

// Parts joined with commas. A number in hexadecimal; nothing for a value without a record and for
// an empty payload. Writes them with a zero after them; null: nowhere. Takes no memory. Returns
// how many characters there are, the zero not included.
std::size_t WriteValueText(const CRuxEntryData& data, char* out);

#endif  // QUERY_VALUE_TEXT_H_
