// Asking the queries and a read model the same questions.
#ifndef TESTS_READ_MODEL_SAME_ANSWERS_H_
#define TESTS_READ_MODEL_SAME_ANSWERS_H_

#include "ruxcomp/model.h"

// Everything that can be asked about what is loaded. Fails the current test where the model, which
// must be one of that, has another answer.
void ExpectSameAnswers(const ruxcomp::Model& model);

#endif  // TESTS_READ_MODEL_SAME_ANSWERS_H_
