// What readers need to know of a stored section or entry before they decode it.
#ifndef DEBUGMETA_MODEL_BYTES_H_
#define DEBUGMETA_MODEL_BYTES_H_

#include <cstdint>

#include "debugmeta/bytes.h"

// The identifier of the section or entry that a record stores. Raises the end-of-record error for a
// record of less than eight bytes.
std::uint32_t RecordId(const RecordView& record);

#endif  // DEBUGMETA_MODEL_BYTES_H_
