// Texts that nobody would call a script.
#ifndef TESTS_GENERATORS_GARBAGE_H_
#define TESTS_GENERATORS_GARBAGE_H_

#include <string>

#include "tests/generators/random_texts.h"

// Any bytes, those that mean something to the reader of scripts preferred.
std::string RandomGarbage(Random& random);

// Changes a script here and there: bytes, words of the language, stretches lost or doubled.
void Damage(Random& random, std::string& script);

#endif  // TESTS_GENERATORS_GARBAGE_H_
