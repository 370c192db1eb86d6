// Random values that the check accepts.
#ifndef TESTS_GENERATORS_RANDOM_VALUES_H_
#define TESTS_GENERATORS_RANDOM_VALUES_H_

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tests/generators/random_texts.h"

// The names that the script has for values to refer to.
struct ScriptNames {
  std::vector<std::pair<std::string, std::uint32_t>> types;    // word and type code
  std::vector<std::string> words;                              // other defined words
  std::vector<std::string> globals;                            // G_...
  std::vector<std::pair<std::string, std::uint32_t>> actions;  // NAME and ARGNUMBER
  std::vector<std::string> tables;                             // NAME
  bool remarkable = true;  // values may be such as the check reports
};

// Where a value is: what else it may refer to.
struct ValuePlace {
  bool in_action = false;
  std::uint32_t arguments = 0;      // of the action
  std::vector<std::string> values;  // VALUE_... of the action
};

// A number or a defined word.
std::string RandomDigital(Random& random, const ScriptNames& names);

// What an operand may be in that place.
std::string RandomOperand(Random& random, const ScriptNames& names, const ValuePlace& place);

// The parts of a value of any type, its name first, now and then with surplus ones.
std::vector<std::string> RandomValue(Random& random, const ScriptNames& names,
                                     const ValuePlace& place);

#endif  // TESTS_GENERATORS_RANDOM_VALUES_H_
