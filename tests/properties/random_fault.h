// One thing that the check must refuse a script for.
#ifndef TESTS_PROPERTIES_RANDOM_FAULT_H_
#define TESTS_PROPERTIES_RANDOM_FAULT_H_

#include <functional>
#include <string>
#include <vector>

#include "tests/generators/random_script.h"

// What the check must report about the fault and nothing else: complete messages, in order. To be
// asked when the sections are laid out.
using FaultMessages =
    std::function<std::vector<std::string>(const std::vector<RandomSection>& sections)>;

// Puts a random fault into a script about which the check has nothing to report.
FaultMessages AddRandomFault(Random& random, std::vector<RandomSection>& sections);

#endif  // TESTS_PROPERTIES_RANDOM_FAULT_H_
