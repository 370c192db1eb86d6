// Random scripts that the check accepts.
#ifndef TESTS_TOOL_DECOMPILE_RANDOM_SCRIPT_H_
#define TESTS_TOOL_DECOMPILE_RANDOM_SCRIPT_H_

#include <string>
#include <vector>

#include "tests/tool/decompile/random_texts.h"

struct RandomItem {
  std::string key;
  std::vector<std::string> parts;  // of the value, without quotes
};

struct RandomSection {
  std::string name;
  std::vector<RandomItem> items;
};

// Sections of every kind but INCLUDE, in the order in which they are to be read: with values of all
// types, references, words that are defined more than once or used before, surplus parts, unknown
// sections and keys, and odd names throughout.
std::vector<RandomSection> RandomScript(Random& random);

#endif  // TESTS_TOOL_DECOMPILE_RANDOM_SCRIPT_H_
