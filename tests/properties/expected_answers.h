// Asking the queries everything about a loaded meta file and comparing the answers with what the
// script says.
#ifndef TESTS_PROPERTIES_EXPECTED_ANSWERS_H_
#define TESTS_PROPERTIES_EXPECTED_ANSWERS_H_

#include "tests/properties/script_meaning.h"

// Fails the current test at whatever differs.
void ExpectAnswers(const ScriptMeaning& meaning);

#endif  // TESTS_PROPERTIES_EXPECTED_ANSWERS_H_
