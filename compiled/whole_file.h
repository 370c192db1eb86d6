// A compiled file in memory.
#ifndef COMPILED_WHOLE_FILE_H_
#define COMPILED_WHOLE_FILE_H_

#include <string>

namespace rux::compiled {

// Throws a Failure of trouble for what cannot be read or has more than 256 MiB: no compiled file is
// that large. Reads up to the end, whatever size the file once had.
std::string ReadWholeFile(const std::string& path);

}  // namespace rux::compiled

#endif  // COMPILED_WHOLE_FILE_H_
