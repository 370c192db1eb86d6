// Two small compiled files that hold every shape of record.
#ifndef TESTS_DAMAGE_SAMPLES_H_
#define TESTS_DAMAGE_SAMPLES_H_

#include <string>

// Written by the library in a process of its own; always the same, the creation time is 0. Both
// throw std::runtime_error when that fails.
std::string MetaSample();
std::string DebugMetaSample();

#endif  // TESTS_DAMAGE_SAMPLES_H_
