// Writing and reading the meta file.
#ifndef BACKEND_META_FILE_H_
#define BACKEND_META_FILE_H_

#include <cstdint>
#include <string>

#include "ruxcomp/records.h"

// Writes g_GCHead and the symbol tables. Returns 1, or 0 when the file cannot be created or
// written.
std::uint32_t WriteMeta(const std::string& path);

// Loads a meta file into g_GCHead and the symbol tables; `info` may be null. Returns 1, or 0 with
// last-error CANNOT_OPEN, WRONG_FORMAT or, for a file that ends early, none of its own. What was
// read until then stays. The records that g_GCHead held are not deleted: release them with
// CompDestory first.
std::uint32_t ReadMeta(const std::string& path, tagMETAFILEINFO* info);

#endif  // BACKEND_META_FILE_H_
