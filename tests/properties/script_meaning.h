// What a random script says, in the terms of the queries on its meta file: worked out from the
// script's sections and items alone, without the library.
#ifndef TESTS_PROPERTIES_SCRIPT_MEANING_H_
#define TESTS_PROPERTIES_SCRIPT_MEANING_H_

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <variant>
#include <vector>

#include "tests/generators/random_script.h"

// What the index of a value refers to.
struct Datum {
  std::uint32_t index_class = 0;  // of its index: the top byte, the rest clear
  std::variant<std::monostate, std::uint32_t, std::string> meaning = {};  // nothing: unresolved
};

struct MeantEntry {
  std::uint32_t identifier = 0;  // the whole of it, or the class when the entry has a name
  std::string name;              // that its identifier refers to
  std::vector<Datum> values;
};

struct MeantSection {
  std::uint32_t identifier = 0;
  std::vector<MeantEntry> entries;
};

struct ScriptMeaning {
  std::vector<MeantSection> sections;  // in reading order
  std::vector<std::string> groups;     // by index: the root first
  std::vector<std::array<std::uint8_t, 256>> tables;
  std::map<std::string, std::uint32_t> words;
};

// For a script that the check accepts.
ScriptMeaning MeaningOf(const std::vector<RandomSection>& sections);

#endif  // TESTS_PROPERTIES_SCRIPT_MEANING_H_
