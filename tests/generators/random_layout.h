// Sections, written down in one of the many ways that mean the same.
#ifndef TESTS_GENERATORS_RANDOM_LAYOUT_H_
#define TESTS_GENERATORS_RANDOM_LAYOUT_H_

#include <vector>

#include "tests/generators/random_script.h"
#include "tests/generators/source_files.h"

// Spread over a main script, which comes first, and files that it includes; with comments, joined
// lines, blanks, quotes and line ends as they come. Notes in the sections and items where they
// are.
SourceFiles RandomLayout(Random& random, std::vector<RandomSection>& sections);

#endif  // TESTS_GENERATORS_RANDOM_LAYOUT_H_
