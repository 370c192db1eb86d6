// Whether a compiled file is sound.
#ifndef TOOL_COMPILED_VERIFY_H_
#define TOOL_COMPILED_VERIFY_H_

#include <string_view>

#include "tool/compiled/fault.h"

namespace rux {

// Checks the bytes of a meta file or of a debug meta file, which they are by their magic, against
// all that the layout says. Without a fault, the library loads them.
Faults Verify(std::string_view bytes);

}  // namespace rux

#endif  // TOOL_COMPILED_VERIFY_H_
