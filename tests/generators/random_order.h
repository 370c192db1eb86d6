// A random order of sections.
#ifndef TESTS_GENERATORS_RANDOM_ORDER_H_
#define TESTS_GENERATORS_RANDOM_ORDER_H_

#include <vector>

#include "tests/generators/random_script.h"

// Mixes the sections, but leaves in their order the groups, which must come after their parents,
// and the definitions, the last one of which counts.
void ShuffleSections(Random& random, std::vector<RandomSection>& sections);

#endif  // TESTS_GENERATORS_RANDOM_ORDER_H_
