// Random scripts have all that the language has: what holds for them holds for all of it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"
#include "tests/generators/random_script.h"
#include "tests/properties/number_reading.h"

namespace {

namespace language = ruxcomp::language;

class CoverageTest : public testing::Test {
 protected:
  void SetUp() override {
    constexpr std::uint32_t kScripts = 200;
    for (std::uint32_t seed = 0; seed < kScripts; ++seed) {
      Random random(seed);
      Take(RandomScript(random));
    }
  }

  std::set<std::pair<std::string, std::string>> keys_;  // with the section that they are in
  std::map<std::uint32_t, std::size_t> most_parts_;     // of values, by the code of their type
  std::set<std::string> second_parts_;

 private:
  // What comes last for a word is its number.
  void Take(const std::vector<RandomSection>& sections) {
    std::map<std::string, std::uint32_t> words;
    for (const RandomSection& section : sections) {
      for (const RandomItem& item : section.items) {
        keys_.emplace(section.name, item.key);
        if (section.name != "DEFINE" && section.name != "IFDEF") continue;
        if (const auto number = ReadNumber(item.parts.front())) words[item.key] = *number;
      }
    }
    for (const RandomSection& section : sections) {
      for (const RandomItem& item : section.items) TakeValue(words, item.parts);
    }
  }

  void TakeValue(const std::map<std::string, std::uint32_t>& words,
                 const std::vector<std::string>& parts) {
    const auto type = parts.empty() ? words.end() : words.find(parts.front());
    if (type == words.end()) return;
    std::size_t& most = most_parts_[type->second];
    most = std::max(most, parts.size());
    if (parts.size() > 1) second_parts_.insert(parts[1]);
  }
};

TEST_F(CoverageTest, RandomScriptsHaveEveryKey) {
  for (const language::EntryTemplate& row : language::kEntryTemplates) {
    const char* section = language::KindOf(row.section).keyword;
    const char* key = language::FindEntryRow(row.identifier)->keyword;
    EXPECT_EQ(keys_.count({section, key}), 1u)
        << "tests/generators/random_script.cpp makes no " << key << " in [" << section << ']';
  }
}

TEST_F(CoverageTest, RandomScriptsHaveEveryTypeOfValue) {
  for (const language::ValueType& type : language::kValueTypes) {
    EXPECT_GE(most_parts_[type.code], type.least)
        << "tests/generators/random_values.cpp makes no whole value of type " << type.code;
  }
}

TEST_F(CoverageTest, RandomScriptsHaveEveryOperator) {
  for (const language::Operator& row : language::kOperators) {
    EXPECT_EQ(second_parts_.count(std::string(row.text)), 1u)
        << "tests/generators/random_values.cpp makes no " << row.text;
  }
}

}  // namespace
