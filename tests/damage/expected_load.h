// What loading a file must come to, found by following its lengths and counts.
#ifndef TESTS_DAMAGE_EXPECTED_LOAD_H_
#define TESTS_DAMAGE_EXPECTED_LOAD_H_

#include <string>

#include "tests/damage/loads.h"

Load ExpectedLoad(Form form, const std::string& file);

#endif  // TESTS_DAMAGE_EXPECTED_LOAD_H_
