// Whether two debug meta files hold models that mean the same.
#ifndef TESTS_TOOL_DECOMPILE_MODEL_COMPARE_H_
#define TESTS_TOOL_DECOMPILE_MODEL_COMPARE_H_

#include <string>

#include "compiled/debug_meta.h"

// The first difference, for people; empty when there is none. Not compared are INCLUDE sections,
// places in files, and the numbers of definitions: the table of words has what those came to.
std::string DifferenceOf(const rux::compiled::DebugMeta& one,
                         const rux::compiled::DebugMeta& other);

#endif  // TESTS_TOOL_DECOMPILE_MODEL_COMPARE_H_
