// What the records of sections and entries share: who carries the file table, and what readers need
// to know of a record before they decode it.
#ifndef DEBUGMETA_MODEL_BYTES_H_
#define DEBUGMETA_MODEL_BYTES_H_

#include <cstdint>

#include "debugmeta/bytes.h"

// The file table travels in the first object record that a process writes, and is looked for in the
// first one that it reads. Records carry no mark of it: writer and reader agree through these
// alone, which are set once and never cleared.
extern bool incFilesWritten;
extern bool incFilesRead;

// The identifier of the section or entry that a record stores. Raises the end-of-record error for a
// record of less than eight bytes.
std::uint32_t RecordId(const RecordView& record);

#endif  // DEBUGMETA_MODEL_BYTES_H_
