// Sections, written down in one of the many ways that mean the same.
#ifndef TESTS_TOOL_DECOMPILE_RANDOM_LAYOUT_H_
#define TESTS_TOOL_DECOMPILE_RANDOM_LAYOUT_H_

#include <vector>

#include "tests/tool/decompile/random_script.h"
#include "tests/tool/decompile/round_trip.h"

// Spread over a main script, which comes first, and files that it includes; with comments, joined
// lines, blanks, quotes and line ends as they come.
SourceFiles RandomLayout(Random& random, const std::vector<RandomSection>& sections);

#endif  // TESTS_TOOL_DECOMPILE_RANDOM_LAYOUT_H_
