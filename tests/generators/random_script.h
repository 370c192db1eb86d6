// Random scripts that the check accepts.
#ifndef TESTS_GENERATORS_RANDOM_SCRIPT_H_
#define TESTS_GENERATORS_RANDOM_SCRIPT_H_

#include <cstdint>
#include <string>
#include <vector>

#include "tests/generators/random_texts.h"

// Where something is in the source files, once they are laid out.
struct Place {
  std::string file;  // without folders
  std::uint32_t line = 0;
};

struct RandomItem {
  std::string key;
  std::vector<std::string> parts;  // of the value, without quotes
  Place place = {};
};

struct RandomSection {
  std::string name;
  std::vector<RandomItem> items;
  Place place = {};
};

struct ScriptOptions {
  // With what the check accepts but reports: surplus parts, odd bus addresses; unknown sections and
  // keys.
  bool remarkable = true;
  // With PELMGROUP sections that have properties. The tables have no names for these, so that the
  // meta file is not read back as it was.
  bool pelm_properties = true;
};

// Sections of every kind but INCLUDE, in the order in which they are to be read: with values of all
// types, references, words that are defined more than once or used before, and odd names and
// numbers throughout.
std::vector<RandomSection> RandomScript(Random& random, const ScriptOptions& options = {});

#endif  // TESTS_GENERATORS_RANDOM_SCRIPT_H_
