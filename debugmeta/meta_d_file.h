// Writing and reading the debug meta file: the whole source model and the defined words.
#ifndef DEBUGMETA_META_D_FILE_H_
#define DEBUGMETA_META_D_FILE_H_

#include <cstdint>
#include <string>

#include "ruxcomp/records.h"

namespace ruxcomp::core {

// Writes the source model as it is. Returns 1, or reports and returns 0 when the file cannot be
// created. Writes that fail later go unnoticed.
std::uint32_t WriteMetaD(const std::string& path);

// Adds a stored source model to the one that is there. `info` may be null. Returns 1, or reports
// and returns 0 when the file cannot be opened or has another format or version. A file that ends
// early reads as if zeros followed. Raises std::out_of_range ("vector") for a record that is
// shorter than it says.
std::uint32_t ReadMetaD(const std::string& path, tagMETAFILEINFO* info);

}  // namespace ruxcomp::core

#endif  // DEBUGMETA_META_D_FILE_H_
